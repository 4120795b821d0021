#include "qt/SpokenName.h"

#include <QAbstractButton>

namespace health {

using namespace Qt::StringLiterals;

void nameControl(QWidget& widget, QString caption)
{
    caption.remove(u'&');
    if (auto* const parts = dynamic_cast<SpokenParts*>(&widget))
        parts->setSpokenName(caption);
    else if (auto* const button = qobject_cast<QAbstractButton*>(&widget); !button)
        widget.setAccessibleName(caption);
    else if (button->text() == u"..."_s)
        button->setAccessibleName(u"Find %1"_s.arg(caption));
}

}
