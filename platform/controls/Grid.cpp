#include "platform/controls/Grid.h"

#include <algorithm>
#include <stdexcept>

namespace health {

namespace {
constexpr std::size_t BlockSize = 16384; // letters
}

TextView Grid::TextArena::keep(TextView text)
{
    if (text.empty())
        return {};
    if (m_current >= m_blocks.size() || m_blocks[m_current].size - m_used < text.size())
        openBlock(text.size());
    wchar_t* const start = m_blocks[m_current].letters.get() + m_used;
    std::copy(text.begin(), text.end(), start);
    m_used += text.size();
    return { start, text.size() };
}

// Moves on to the next block, inserting one if that has no room for `length` letters.
void Grid::TextArena::openBlock(std::size_t length)
{
    if (m_current < m_blocks.size())
        ++m_current;
    m_used = 0;
    const bool fits = m_current < m_blocks.size() && m_blocks[m_current].size >= length;
    if (fits)
        return;
    const std::size_t size = std::max(length, BlockSize);
    m_blocks.insert(m_blocks.begin() + static_cast<std::ptrdiff_t>(m_current),
        Block { std::make_unique_for_overwrite<wchar_t[]>(size), size });
}

void Grid::TextArena::clear()
{
    m_current = 0;
    m_used = 0;
}

std::size_t Grid::cellIndex(int row, int column) const
{
    if (row < 0 || row >= rowCount() || column < 0 || column >= columnCount())
        throw std::out_of_range("No such cell in the grid.");
    return static_cast<std::size_t>(row) * m_columns.size() + static_cast<std::size_t>(column);
}

void Grid::contentsChanged()
{
    if (m_drawing)
        notify(Change::Contents);
}

void Grid::setColumnWidth(int index, int twips)
{
    m_columnsSized = false;
    assignColumn(index, &Column::width, twips);
}

void Grid::sizeColumns()
{
    m_columnsSized = true;
    notify(Change::ColumnsSized);
}

void Grid::setColumnCount(int count)
{
    setRowCount(0);
    m_columns.assign(static_cast<std::size_t>(count), Column());
    notify(Change::Layout);
}

void Grid::setRowCount(int count)
{
    const auto rows = static_cast<std::size_t>(count);
    m_cells.resize(rows * m_columns.size());
    m_rowData.resize(rows);
    if (rows == 0)
        m_texts.clear();
    contentsChanged();
    if (m_row >= count)
        select(-1);
}

void Grid::appendRow(TextView data, std::span<const TextView> texts)
{
    if (texts.size() > m_columns.size())
        throw std::out_of_range("The grid has fewer columns.");
    m_rowData.push_back(m_texts.keep(data));
    for (const TextView text : texts)
        m_cells.emplace_back().text = m_texts.keep(text);
    m_cells.resize(m_rowData.size() * m_columns.size());
    contentsChanged();
}

void Grid::clear()
{
    m_cells.assign(m_cells.size(), Cell());
    m_rowData.assign(m_rowData.size(), TextView());
    m_texts.clear();
    contentsChanged();
}

void Grid::setText(int row, int column, TextView text)
{
    m_cells[cellIndex(row, column)].text = m_texts.keep(text);
    contentsChanged();
}

void Grid::setRowData(int row, TextView data) { m_rowData.at(static_cast<std::size_t>(row)) = m_texts.keep(data); }

void Grid::setCellForeColour(int row, int column, Colour colour)
{
    Colour& current = m_cells[cellIndex(row, column)].foreColour;
    if (current == colour)
        return;
    current = colour;
    if (m_drawing)
        notify(Change::Colours);
}

void Grid::select(int row, int column)
{
    if (row >= rowCount())
        throw std::out_of_range("No such row in the grid.");
    m_selectedColumn = column;
    if (row == m_row)
        return;
    m_row = row;
    notify(Change::Selection);
    raise(SelectionChange);
}

void Grid::showRow(int row)
{
    m_shownRow = row;
    notify(Change::ScrolledTo);
}

void Grid::flashRow(int row)
{
    m_flashedRow = row;
    notify(Change::Flashed);
}

void Grid::setDrawing(bool drawing)
{
    if (m_drawing == drawing)
        return;
    m_drawing = drawing;
    notify(Change::Contents);
}

void Grid::moveMouse(int row, int column)
{
    m_mouseRow = row < rowCount() ? row : -1;
    m_mouseColumn = m_mouseRow == -1 ? -1 : column;
    raise(MouseMove);
}

void Grid::choose(int row)
{
    if (isEnabled() && row < rowCount())
        select(row);
}

void Grid::releaseMouse(MouseButton button, int row)
{
    m_mouseRow = row < rowCount() ? row : -1;
    raise(MouseUp, button);
}

void Grid::doubleClick(int row)
{
    m_mouseRow = row < rowCount() ? row : -1;
    raise(DblClick);
}

}
