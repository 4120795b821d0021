#pragma once

#include <QDialogButtonBox>
#include <QPushButton>

namespace health {

// Adds a button that is never pressed by Enter in another field; its tip is spoken too.
inline QPushButton* addActionButton(QDialogButtonBox& buttons, const QString& caption, const QString& tip)
{
    QPushButton* const button = buttons.addButton(caption, QDialogButtonBox::ActionRole);
    button->setAutoDefault(false);
    button->setToolTip(tip);
    button->setAccessibleDescription(tip);
    return button;
}

}
