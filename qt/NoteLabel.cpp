#include "qt/NoteLabel.h"

#include "qt/Mirror.h"

#include <QEvent>

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
    m_field.setAccessibleDescription(note);
    setText(note);
    setVisible(!note.isEmpty());
    // The window grows by the line where it has no room for it.
    QMetaObject::invokeMethod(
        window(), [window = window()] { window->resize(window->size().expandedTo(window->minimumSizeHint())); },
        Qt::QueuedConnection);
}

}
