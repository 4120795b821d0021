#pragma once

#include "api/Text.h"

#include <QStyledItemDelegate>

#include <vector>

class QTableView;

namespace health {

struct TextRange;
class RecordRows;
enum class RowStyle;

// Lengths of the list's rows, in pixels.
struct RowMeasures {
    explicit RowMeasures(const QWidget& list);

    int line; // height
    int above; // the first line
    int aboveAndBelow; // the text
    int labelEnd; // from a label to the end of its column
    int left; // of a summary in its column
    int right;
    int narrow; // a summary's column below this width is narrow
};

// Draws the list's rows: labels that end at the axis, typeset summaries that begin there, hairlines between kinds.
class RecordDelegate : public QStyledItemDelegate {
public:
    // Both must outlive the delegate.
    RecordDelegate(RecordRows& rows, QTableView& list);

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    // Of a row's height only.
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

    // The lines of a row's label in a column of this width, in pixels.
    int linesOfLabel(int row, int width) const;

private:
    // A piece of a text in one line; `start` counts the letters before it.
    struct LineText {
        TextView letters;
        std::size_t start;
        QFont font;
        QColor colour;
        const std::vector<TextRange>& found; // in the whole text
    };

    // A label as it is set: its font, and the first letter of each line.
    struct SetLabel {
        TextView letters;
        RowStyle style;
        std::vector<std::size_t> starts;
    };

    SetLabel setLabel(int row, int width) const;
    void paintLabel(QPainter& painter, const QRect& place, int row) const;
    void paintSummary(QPainter& painter, const QRect& place, int row) const;
    QColor colourOf(RowStyle style, int row) const;
    void drawText(QPainter& painter, QPoint topLeft, const LineText& text) const;
    bool isSelected(int row) const;

    RecordRows& m_rows;
    QTableView& m_list;
};

}
