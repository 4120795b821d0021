#include "qt/EntryLine.h"

#include <QFocusEvent>
#include <QStyle>
#include <QStyleOptionFrame>

#include <utility>

namespace health {

EntryLine::EntryLine(const QString& text, QWidget* parent)
    : QLineEdit(text, parent)
{
}

void EntryLine::setSample(const QString& letters)
{
    m_sample = letters;
    setSizePolicy(letters.isEmpty() ? QSizePolicy::Expanding : QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize EntryLine::sizeOfSample() const
{
    constexpr int margins = 8; // the line's own, around the text
    QStyleOptionFrame option;
    initStyleOption(&option);
    const QSize text(fontMetrics().horizontalAdvance(m_sample) + margins, fontMetrics().height());
    const int width = style()->sizeFromContents(QStyle::CT_LineEdit, &option, text, this).width();
    return { width, QLineEdit::sizeHint().height() };
}

QSize EntryLine::sizeHint() const { return m_sample.isEmpty() ? QLineEdit::sizeHint() : sizeOfSample(); }

QSize EntryLine::minimumSizeHint() const { return m_sample.isEmpty() ? QLineEdit::minimumSizeHint() : sizeOfSample(); }

void EntryLine::focusInEvent(QFocusEvent* event)
{
    m_entering = event->reason() == Qt::MouseFocusReason;
    QLineEdit::focusInEvent(event);
}

void EntryLine::mouseReleaseEvent(QMouseEvent* event)
{
    QLineEdit::mouseReleaseEvent(event);
    if (std::exchange(m_entering, false) && !hasSelectedText())
        selectAll();
}

}
