#include "qt/NoteLabel.h"

#include "qt/Mirror.h"

#include <QEvent>
#include <QLayout>
#include <QScreen>

#include <algorithm>

namespace health {

NoteLabel::NoteLabel(QWidget& field)
    : m_field(field)
{
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    field.installEventFilter(this);
    hide();
}

bool NoteLabel::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::DynamicPropertyChange)
        showNote();
    return QLabel::eventFilter(watched, event);
}

void NoteLabel::showNote()
{
    const QString note = m_field.property(NoteProperty).toString();
    (m_field.focusProxy() ? m_field.focusProxy() : &m_field)->setAccessibleDescription(note);
    setText(note);
    setVisible(!note.isEmpty());
    QMetaObject::invokeMethod(this, &NoteLabel::makeRoom, Qt::QueuedConnection);
}

// Enlarges the window if the note does not fit.
void NoteLabel::makeRoom()
{
    const QLayout* const layout = window()->layout();
    if (!layout)
        return;
    const int width = window()->width();
    const int needed =
        layout->hasHeightForWidth() ? layout->totalHeightForWidth(width) : layout->totalSizeHint().height();
    const int most = window()->screen()->availableGeometry().bottom() - window()->frameGeometry().top();
    window()->resize(width, std::max(window()->height(), std::min(needed, most)));
}

}
