#include "qt/GridDelegate.h"

#include "toolkit/Inks.h"

namespace health {

void GridDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    if (option->state.testFlag(QStyle::State_Selected))
        option->backgroundBrush = colourOf(Ink::SelectionTint, option->palette);
    option->state &= ~(QStyle::State_Selected | QStyle::State_HasFocus | QStyle::State_MouseOver);
}

}
