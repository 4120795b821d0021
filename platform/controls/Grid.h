#pragma once

#include "platform/controls/Control.h"
#include "platform/controls/TextArena.h"

#include <vector>

namespace health {

enum class MouseButton {
    Left = 1,
    Right = 2,
};

// A table of texts. Rows and columns count from 0; an index without a cell is a std::out_of_range.
// Texts are kept together, so that a grid of many rows costs few allocations.
class Grid : public Control {
public:
    struct Column {
        int width = -1; // twips; -1: what is left, or as the front end sees fit
        bool hidden = false;
        int alignment = 0; // number of the alignment: 6 is right, top
        Text heading; // above the column; a grid without any heading shows no heading row
    };

    int columnCount() const { return static_cast<int>(m_columns.size()); }
    // Changing the number of columns empties the grid of its rows.
    void setColumnCount(int count);
    const Column& column(int index) const { return m_columns.at(static_cast<std::size_t>(index)); }
    void setColumnWidth(int index, int twips);
    void setColumnHidden(int index, bool hidden) { assignColumn(index, &Column::hidden, hidden); }
    void setColumnAlignment(int index, int alignment) { assignColumn(index, &Column::alignment, alignment); }

    void setColumnHeading(int index, TextView heading) { assignColumn(index, &Column::heading, Text(heading)); }

    // Makes all shown columns as wide as their contents, until one gets another width.
    void sizeColumns();
    bool hasSizedColumns() const { return m_columnsSized; }

    bool wordWrap() const { return m_wordWrap; }
    void setWordWrap(bool wrap) { assign(m_wordWrap, wrap, Change::Layout); }

    // A text that the view shows below the rows, or in their place while the grid is empty. It is never a row.
    const Text& hint() const { return m_hint; }
    void setHint(TextView hint) { assign(m_hint, Text(hint), Change::Hint); }

    int rowCount() const { return static_cast<int>(m_rowData.size()); }
    // New rows are empty. A selected row that goes is no longer selected.
    void setRowCount(int count);
    // Empties all cells and row data and takes all colours back; the rows stay.
    void clear();

    // The view is valid until the next clear(), setColumnCount() or setRowCount().
    TextView text(int row, int column) const { return cell(row, column).text; }
    void setText(int row, int column, TextView text);
    // A text of the program's own that belongs to a row, never shown.
    TextView rowData(int row) const { return m_rowData.at(static_cast<std::size_t>(row)); }
    void setRowData(int row, TextView data);
    Colour cellForeColour(int row, int column) const { return cell(row, column).foreColour; }
    void setCellForeColour(int row, int column, Colour colour);

    // The selected row, -1 when there is none.
    int row() const { return m_row; }
    // The column from which on the row is selected.
    int selectedColumn() const { return m_selectedColumn; }
    // Selects a row, or none with -1, and raises SelectionChange when the row changes.
    void select(int row, int column = 0);
    // Scrolls so that a row can be seen.
    void showRow(int row);
    int shownRow() const { return m_shownRow; }

    // While drawing is off, an observer shows no rows; it is told when drawing goes off and on again, and of no
    // change of contents in between.
    bool isDrawing() const { return m_drawing; }
    void setDrawing(bool drawing);

    // The row under the mouse, -1 when the mouse is not over a row.
    int mouseRow() const { return m_mouseRow; }

    // The user moves the mouse over a cell; -1 for no cell.
    void moveMouse(int row, int column);
    int mouseColumn() const { return m_mouseColumn; }
    // The user selects a row.
    void choose(int row);
    // The user releases a mouse button over a row, or beside the rows (-1). A key that asks for the context
    // menu arrives as the right button over the selected row.
    void releaseMouse(MouseButton button, int row);
    void doubleClick(int row);

    std::function<void()> SelectionChange;
    std::function<void(MouseButton)> MouseUp;
    std::function<void()> DblClick;
    std::function<void()> MouseMove;

private:
    struct Cell {
        TextView text;
        Colour foreColour = DefaultColour;
    };

    template<typename Value>
    void assignColumn(int index, Value Column::*member, Value value)
    {
        assign(m_columns.at(static_cast<std::size_t>(index)).*member, value, Change::Layout);
    }

    std::size_t cellIndex(int row, int column) const;
    const Cell& cell(int row, int column) const { return m_cells[cellIndex(row, column)]; }
    void contentsChanged();

    std::vector<Column> m_columns;
    std::vector<Cell> m_cells; // row after row
    std::vector<TextView> m_rowData;
    TextArena m_texts;
    Text m_hint;
    bool m_wordWrap = false;
    bool m_columnsSized = false;
    bool m_drawing = true;
    int m_row = -1;
    int m_selectedColumn = 0;
    int m_shownRow = 0;
    int m_mouseRow = -1;
    int m_mouseColumn = -1;
};

// Keeps a grid from drawing for as long as the object lives.
class DrawingPause {
public:
    explicit DrawingPause(Grid& grid)
        : m_grid(grid)
        , m_before(grid.isDrawing())
    {
        m_grid.setDrawing(false);
    }
    ~DrawingPause() { m_grid.setDrawing(m_before); }
    DrawingPause(const DrawingPause&) = delete;
    DrawingPause& operator=(const DrawingPause&) = delete;

private:
    Grid& m_grid;
    const bool m_before;
};

}
