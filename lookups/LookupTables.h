// The server tables that can be searched, and how they differ.
#pragma once

#include "text/Pieces.h"

#include <vector>

namespace health {

struct LookupTable {
    TextView name; // after "Lookup " in the dialog's caption
    TextView file = {}; // FileMan file number, for calls that search files
    TextView call = L"MEVUTL DICLKUP";
    TextView screen = {}; // M expression that the server evaluates, with "~" for "^"
    TextView fields = L".01";
    TextView index = {};
    TextView columns = {}; // empty: id, hidden code, name
    bool allowsEmptySearch = true;
    bool codeBeforeName = false; // show a single match as "code - name"
};

namespace LookupTableNumber {
inline constexpr int Immunization = 0;
inline constexpr int Provider = 11;
inline constexpr int Location = 14;
inline constexpr int Vendor = 21;
inline constexpr int EducationTopic = 22;
inline constexpr int Patient = 24;
}

// A table by its number. Throws std::out_of_range for any other number.
const LookupTable& lookupTable(int number);

// One column of the result grid.
struct LookupColumn {
    Text heading;
    bool hidden = false;
    PieceNumber source = 0; // "^"-piece of a reply line; 0: an empty column
    bool properCase = false;
};

// Parses the table's column layout: heading ":" hidden flag ":" source [":" case flag], joined by "^".
std::vector<LookupColumn> lookupColumns(const LookupTable& table);

}
