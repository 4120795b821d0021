// The server tables that can be searched: all that differs between them.
#pragma once

#include "text/Pieces.h"

#include <vector>

namespace health {

struct LookupTable {
    TextView name; // after "Lookup " in the dialog's caption
    TextView file = {}; // FileMan file number, where the call searches files
    TextView call = L"MEVUTL DICLKUP";
    TextView screen = {}; // M expression of the server; "~" stands where it means "^"
    TextView fields = L".01";
    TextView index = {};
    TextView columns = {}; // empty: id, hidden code, name
    bool allowsEmptySearch = true;
    bool codeBeforeName = false; // in the text of a single match: "code - name"
};

namespace LookupTableNumber {
inline constexpr int Immunization = 0;
inline constexpr int Provider = 11;
inline constexpr int Location = 14;
inline constexpr int Vendor = 21;
inline constexpr int EducationTopic = 22;
inline constexpr int Patient = 24;
}

// A table by its number; any other number is a std::out_of_range.
const LookupTable& lookupTable(int number);

// One column of the result grid.
struct LookupColumn {
    Text heading;
    bool hidden = false;
    PieceNumber source = 0; // "^"-piece of a reply line; 0: an empty column
    bool properCase = false;
};

// The table's column layout, taken apart: heading ":" hidden flag ":" source [":" case flag], joined by "^".
std::vector<LookupColumn> lookupColumns(const LookupTable& table);

}
