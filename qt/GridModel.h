#pragma once

#include "platform/controls/Grid.h"

#include <QAbstractTableModel>

namespace health {

// The shown columns of a grid as an item model. Reads the grid in place: nothing is copied but the texts of
// the cells that are asked for. While the grid does not draw, the model has no rows.
class GridModel : public QAbstractTableModel {
    Q_OBJECT
public:
    // The grid must outlive the model. `headings` are spoken by screen readers, by grid column.
    GridModel(const Grid& grid, QStringList headings, QObject* parent);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    // The grid's column behind a column of the model.
    int gridColumn(int column) const { return m_columns.at(column); }

    // To be called after the grid's rows or columns have changed.
    void reset();
    // The same for colours alone.
    void coloursChanged();

    // The colours of even and odd rows' ground: texts get shades of their colours that can be read on both; the grid
    // keeps its colour numbers.
    void setGrounds(Colour even, Colour odd);

private:
    QVariant foreground(Colour colour) const;

    const Grid& m_grid;
    QStringList m_headings;
    QList<int> m_columns;
    Colour m_evenGround = 0xFFFFFF;
    Colour m_oddGround = 0xFFFFFF;
};

}
