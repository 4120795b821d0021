#pragma once

#include "platform/controls/Control.h"

#include <memory>
#include <span>
#include <vector>

namespace health {

enum class MouseButton {
    Left = 1,
    Right = 2,
};

// A table of texts. Rows and columns count from 0; an index without a cell throws std::out_of_range.
// The texts share their storage, so that a grid of many rows costs few allocations.
class Grid final : public Control {
public:
    struct Column {
        int width = -1; // twips; -1: the front end chooses
        bool hidden = false;
        int alignment = 0; // counts down the columns of a 3 by 3 square: 0 is top left, 6 is top right
        Text heading; // a grid without any heading shows no heading row
    };

    void accept(ControlVisitor& visitor) override { visitor.visit(*this); }

    int columnCount() const { return static_cast<int>(m_columns.size()); }
    // Changing the number of columns removes all rows.
    void setColumnCount(int count);
    const Column& column(int index) const { return m_columns.at(static_cast<std::size_t>(index)); }
    void setColumnWidth(int index, int twips);
    void setColumnHidden(int index, bool hidden) { assignColumn(index, &Column::hidden, hidden); }
    void setColumnAlignment(int index, int alignment) { assignColumn(index, &Column::alignment, alignment); }

    void setColumnHeading(int index, TextView heading) { assignColumn(index, &Column::heading, Text(heading)); }

    // Fits all shown columns to their contents until setColumnWidth() is called.
    void sizeColumns();
    bool hasSizedColumns() const { return m_columnsSized; }

    bool wordWrap() const { return m_wordWrap; }
    void setWordWrap(bool wrap) { assign(m_wordWrap, wrap, Change::Layout); }

    // A text below the rows, or in the middle of an empty grid. It is never a row.
    const Text& hint() const { return m_hint; }
    void setHint(TextView hint) { assign(m_hint, Text(hint), Change::Hint); }

    int rowCount() const { return static_cast<int>(m_rowData.size()); }
    // New rows are empty. Removing the selected row clears the selection.
    void setRowCount(int count);
    // Appends a row with its data and the texts of its first columns. Throws std::out_of_range for too many texts.
    void appendRow(TextView data, std::span<const TextView> texts);
    // Clears all cells, row data and colours; the rows stay.
    void clear();

    // The view is valid until the next clear(), setColumnCount() or setRowCount().
    TextView text(int row, int column) const { return cell(row, column).text; }
    void setText(int row, int column, TextView text);
    // A text that the program attaches to a row; never shown.
    TextView rowData(int row) const { return m_rowData.at(static_cast<std::size_t>(row)); }
    void setRowData(int row, TextView data);
    Colour cellForeColour(int row, int column) const { return cell(row, column).foreColour; }
    void setCellForeColour(int row, int column, Colour colour);

    // The selected row, -1 if no row is selected.
    int row() const { return m_row; }
    // The first column of the selection.
    int selectedColumn() const { return m_selectedColumn; }
    // Selects a row, or clears the selection with -1, and raises SelectionChange if the row changes.
    void select(int row, int column = 0);
    // Scrolls to a row.
    void showRow(int row);
    int shownRow() const { return m_shownRow; }

    // Highlights a row briefly.
    void flashRow(int row);
    int flashedRow() const { return m_flashedRow; }

    // While drawing is off the observer shows no rows and gets no Contents notifications; it is notified when drawing
    // is switched off and on.
    bool isDrawing() const { return m_drawing; }
    void setDrawing(bool drawing);

    // The row under the mouse, -1 if the mouse is not over a row.
    int mouseRow() const { return m_mouseRow; }

    // The user moves the mouse over a cell, or with -1 off the cells.
    void moveMouse(int row, int column);
    int mouseColumn() const { return m_mouseColumn; }
    // The user selects a row.
    void choose(int row);
    // The user releases a mouse button over a row, or beside the rows (-1). The menu key arrives as the right button
    // over the selected row.
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

    // Stores many texts with a common life without an allocation for each.
    class TextArena {
    public:
        // Copies a text into the arena; the result is valid until clear().
        TextView keep(TextView text);
        // Discards all texts and reuses their storage.
        void clear();

    private:
        struct Block {
            std::unique_ptr<wchar_t[]> letters;
            std::size_t size;
        };

        void openBlock(std::size_t length);

        std::vector<Block> m_blocks;
        std::size_t m_current = 0; // the block being filled
        std::size_t m_used = 0; // letters used in it
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
    int m_flashedRow = -1;
    int m_mouseRow = -1;
    int m_mouseColumn = -1;
};

// Switches a grid's drawing off during the object's life.
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
