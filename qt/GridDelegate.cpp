#include "qt/GridDelegate.h"

#include "toolkit/Inks.h"

namespace health {

void GridDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    if (!option->features.testFlag(QStyleOptionViewItem::WrapText)) // a single line stands in the middle of its row
        option->displayAlignment = (option->displayAlignment & Qt::AlignHorizontal_Mask) | Qt::AlignVCenter;
    if (option->state.testFlag(QStyle::State_Selected))
        option->backgroundBrush = colourOf(Ink::SelectionTint, option->palette);
    option->state &= ~(QStyle::State_Selected | QStyle::State_HasFocus | QStyle::State_MouseOver);
}

}
