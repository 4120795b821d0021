#include "qt/FieldButton.h"

#include "toolkit/Inks.h"
#include "toolkit/Measures.h"

namespace health {

FieldButton::FieldButton(Symbol symbol, QWidget* parent)
    : QToolButton(parent)
    , m_symbol(symbol)
{
    setFocusPolicy(Qt::NoFocus);
    setCursor(Qt::ArrowCursor);
    setAttribute(Qt::WA_Hover);
}

QSize FieldButton::sizeHint() const
{
    const Measures measures(*this);
    return { measures.ems(1.3), measures.fieldHeight() - 2 * measures.focusFrame() };
}

// Fainter than the field's text until the mouse is over it.
void FieldButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const bool lively = isEnabled() && (underMouse() || isDown());
    const QColor colour = lively ? colourOf(Ink::Words, palette())
        : isEnabled()            ? colourOf(Ink::Quiet, palette())
                                 : fadedColourOf(Ink::Quiet, palette());
    drawSymbol(painter, rect(), *this, m_symbol, colour);
}

}
