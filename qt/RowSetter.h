#pragma once

#include "records/SummaryTypesetting.h"

#include <QFont>

#include <string_view>
#include <unordered_map>
#include <vector>

namespace health {

enum class RowStyle { Plain, Quiet, Strong };

// Letters of a summary in one style and one line.
struct RowPiece {
    std::size_t start = 0; // in the summary
    std::size_t length = 0;
    int left = 0; // pixels from the beginning of the summary's column
    int line = 0;
    RowStyle style = RowStyle::Plain;
};

struct RowText {
    std::vector<RowPiece> pieces;
    int lines = 1;
};

// Breaks typeset summaries into lines: the date in a column of its own, then the fields. Lines break after a field, and
// within one only if it is longer than a line. Keeps the widths of texts, because rows repeat theirs.
class RowSetter {
public:
    void setFont(const QFont& font);
    const QFont& font(RowStyle style) const { return style == RowStyle::Strong ? m_strong : m_plain; }

    // `width` of the summary's column, `narrow` in pixels: in a narrower column, lines continue below the date.
    RowText set(const std::vector<SummaryRun>& runs, int width, int narrow);

    int widthOf(TextView text, RowStyle style);

private:
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(TextView text) const { return std::hash<TextView>()(text); }
    };
    using Widths = std::unordered_map<Text, int, Hash, std::equal_to<>>;
    class Lines;

    int dateWidth();

    QFont m_plain;
    QFont m_strong;
    Widths m_plainWidths;
    Widths m_strongWidths;
};

// A text as it is drawn in one line.
QString inOneLine(TextView text);

}
