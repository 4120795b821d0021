#include "qt/GridModel.h"

#include "toolkit/QtText.h"

#include <QBrush>

#include <utility>

namespace health {

namespace {

// Alignment numbers: left, centre and right, each with top, middle and bottom.
Qt::Alignment alignmentOf(int number)
{
    static constexpr Qt::AlignmentFlag horizontal[] = { Qt::AlignLeft, Qt::AlignHCenter, Qt::AlignRight };
    static constexpr Qt::AlignmentFlag vertical[] = { Qt::AlignTop, Qt::AlignVCenter, Qt::AlignBottom };
    if (number < 0 || number > 8)
        return Qt::AlignLeft | Qt::AlignTop;
    return horizontal[number / 3] | vertical[number % 3];
}

}

GridModel::GridModel(const Grid& grid, QStringList headings, QObject* parent)
    : QAbstractTableModel(parent)
    , m_grid(grid)
    , m_headings(std::move(headings))
{
    reset();
}

int GridModel::rowCount(const QModelIndex& parent) const
{
    if (parent.isValid() || !m_grid.isDrawing())
        return 0;
    return m_rows ? static_cast<int>(m_rows->size()) : m_grid.rowCount();
}

int GridModel::gridRow(int row) const
{
    if (row < 0 || row >= rowCount())
        return -1;
    return m_rows ? (*m_rows)[static_cast<std::size_t>(row)] : row;
}

int GridModel::modelRow(int gridRow) const
{
    if (!m_rows)
        return gridRow < rowCount() ? gridRow : -1;
    const auto place = static_cast<std::size_t>(gridRow);
    return gridRow < 0 || place >= m_places.size() ? -1 : m_places[place];
}

int GridModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_columns.size());
}

QVariant GridModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount() || index.column() >= columnCount())
        return {};
    const int row = gridRow(index.row());
    const int column = m_columns[index.column()];
    switch (role) {
    case Qt::DisplayRole:
        return toQString(m_grid.text(row, column));
    case Qt::ForegroundRole:
        return m_grid.cellForeColour(row, column) == DefaultColour ? QVariant() : QBrush(m_highlight);
    case Qt::TextAlignmentRole:
        return QVariant(alignmentOf(m_grid.column(column).alignment));
    case Qt::AccessibleDescriptionRole:
        return m_describe ? QVariant(m_describe(row)) : QVariant();
    default:
        return {};
    }
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section >= columnCount())
        return {};
    const Text& heading = m_grid.column(m_columns[section]).heading;
    return heading.empty() ? m_headings.value(m_columns[section]) : toQString(heading);
}

void GridModel::reset()
{
    beginResetModel();
    m_columns.clear();
    m_places.clear();
    if (m_rows) {
        std::erase_if(*m_rows, [this](int row) { return row < 0 || row >= m_grid.rowCount(); });
        m_places.assign(static_cast<std::size_t>(m_grid.rowCount()), -1);
        for (std::size_t i = 0; i < m_rows->size(); ++i)
            m_places[static_cast<std::size_t>((*m_rows)[i])] = static_cast<int>(i);
    }
    for (int column = 0; column < m_grid.columnCount(); ++column) {
        if (!m_grid.column(column).hidden)
            m_columns.append(column);
    }
    endResetModel();
}

void GridModel::coloursChanged()
{
    if (rowCount() > 0 && columnCount() > 0)
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1), { Qt::ForegroundRole });
}

void GridModel::setHighlight(const QColor& colour)
{
    if (std::exchange(m_highlight, colour) != colour)
        coloursChanged();
}

}
