#pragma once

#include <QStyledItemDelegate>

namespace health {

// Draws a grid's cells: a selected row has a tint, and keeps the colours of its texts.
class GridDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};

}
