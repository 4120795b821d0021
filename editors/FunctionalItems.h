// The items of a functional status assessment, in the order of the server's pieces.
#pragma once

#include "text/Pieces.h"

#include <array>
#include <span>

namespace health {

struct FunctionalItem {
    TextView label; // on the editor, with its access key
    TextView rowName; // in the viewer
    TextView listName; // in the list of records
    std::span<const TextView> choices;
    TextView toolTip;
};

inline constexpr std::size_t FunctionalItemCount = 14;
inline constexpr std::size_t DailyLivingItems = 6; // items 0 to 5; 6 to 11 are instrumental
inline constexpr std::size_t InstrumentalItems = 12;

extern const std::array<FunctionalItem, FunctionalItemCount> FunctionalItems;

// The "^"-piece of the first item in a reply of "MEVVELD GET"; the others follow. Each is a text, optionally followed
// by
// "|" and a code.
inline constexpr PieceNumber FirstFunctionalPiece = 4;

}
