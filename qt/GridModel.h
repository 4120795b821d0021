#pragma once

#include "platform/controls/Grid.h"

#include <QAbstractTableModel>
#include <QColor>

#include <functional>
#include <optional>
#include <vector>

namespace health {

// The shown columns of a grid as an item model. Reads the grid in place and copies only the texts of requested cells.
// While the grid does not draw, the model has no rows.
class GridModel : public QAbstractTableModel {
    Q_OBJECT
public:
    // The grid must outlive the model. `headings` are for screen readers, one for each grid column.
    GridModel(const Grid& grid, QStringList headings, QObject* parent);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    // The grid's column behind a column of the model.
    int gridColumn(int column) const { return m_columns.at(column); }

    // The grid's row behind a row of the model, and the reverse; -1 for a row that is not shown.
    int gridRow(int row) const;
    int modelRow(int gridRow) const;

    // Shows these rows of the grid in this order, after the next reset(); by default, all in the grid's order.
    void showRows(std::optional<std::vector<int>> rows) { m_rows = std::move(rows); }

    // Call after the grid's rows or columns have changed.
    void reset();
    // Call after only colours have changed.
    void coloursChanged();

    // The colour of texts whose colour the grid has set.
    void setHighlight(const QColor& colour);
    // What screen readers add to the text of a grid's row.
    void setDescription(std::function<QString(int gridRow)> describe) { m_describe = std::move(describe); }

private:
    const Grid& m_grid;
    QStringList m_headings;
    QList<int> m_columns;
    std::optional<std::vector<int>> m_rows;
    std::function<QString(int gridRow)> m_describe;
    QColor m_highlight;
    std::vector<int> m_places; // the model's row of each row of the grid; empty while all rows are shown in order
};

}
