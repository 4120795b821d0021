#include "qt/EntryLine.h"

#include "toolkit/ControlStyle.h"
#include "toolkit/Measures.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QStyle>
#include <QStyleOptionFrame>

#include <utility>

namespace health {

bool isStrayAccessKey(const QKeyEvent& event)
{
    const bool altAlone = (event.modifiers() & (Qt::AltModifier | Qt::ControlModifier)) == Qt::AltModifier;
    return altAlone && !event.text().isEmpty() && event.text()[0].isPrint();
}

EntryLine::EntryLine(const QString& text, QWidget* parent)
    : QLineEdit(text, parent)
{
    ControlStyle::giveTo(*this);
}

void EntryLine::setSample(const QString& letters)
{
    m_sample = letters;
    setSizePolicy(letters.isEmpty() ? QSizePolicy::Expanding : QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize EntryLine::sizeOfSample() const
{
    const int margins = Measures(*this).u() + textMargins().right(); // the cursor needs room behind the text
    QStyleOptionFrame option;
    initStyleOption(&option);
    const QSize text(fontMetrics().horizontalAdvance(m_sample) + margins, fontMetrics().height());
    const int width = style()->sizeFromContents(QStyle::CT_LineEdit, &option, text, this).width();
    return { width, QLineEdit::sizeHint().height() };
}

QSize EntryLine::sizeHint() const { return m_sample.isEmpty() ? QLineEdit::sizeHint() : sizeOfSample(); }

QSize EntryLine::minimumSizeHint() const { return m_sample.isEmpty() ? QLineEdit::minimumSizeHint() : sizeOfSample(); }

// A message box may open between the focus event and the mouse press of the same click.
void EntryLine::focusInEvent(QFocusEvent* event)
{
    m_entering = m_entering || event->reason() == Qt::MouseFocusReason;
    QLineEdit::focusInEvent(event);
}

void EntryLine::focusOutEvent(QFocusEvent* event)
{
    const Qt::FocusReason reason = event->reason();
    if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason)
        m_entering = false;
    QLineEdit::focusOutEvent(event);
}

void EntryLine::keyPressEvent(QKeyEvent* event)
{
    m_entering = false;
    if (isStrayAccessKey(*event))
        event->ignore();
    else
        QLineEdit::keyPressEvent(event);
}

void EntryLine::mousePressEvent(QMouseEvent* event)
{
    m_clickEnters = std::exchange(m_entering, false) && event->button() == Qt::LeftButton;
    if (m_clickEnters)
        selectAll();
    else
        QLineEdit::mousePressEvent(event);
}

void EntryLine::mouseMoveEvent(QMouseEvent* event)
{
    if (!m_clickEnters)
        QLineEdit::mouseMoveEvent(event);
}

void EntryLine::mouseReleaseEvent(QMouseEvent* event)
{
    if (!std::exchange(m_clickEnters, false))
        QLineEdit::mouseReleaseEvent(event);
}

}
