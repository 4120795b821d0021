#include "qt/PillButton.h"

#include "toolkit/Inks.h"
#include "toolkit/Measures.h"

#include <QEvent>

namespace health {

namespace {
constexpr double SidePadding = 2.5; // units
constexpr double AsideGap = 2; // units
}

PillButton::PillButton(const QString& text, QWidget* parent)
    : QAbstractButton(parent)
{
    setText(text);
    setAttribute(Qt::WA_Hover);
}

void PillButton::setAside(const QString& aside)
{
    if (std::exchange(m_aside, aside) == aside)
        return;
    updateGeometry();
    update();
}

void PillButton::setQuiet(bool quiet)
{
    if (std::exchange(m_quiet, quiet) != quiet)
        update();
}

bool PillButton::event(QEvent* event)
{
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)
        update();
    return QAbstractButton::event(event);
}

int PillButton::symbolWidth() const { return m_symbol ? Measures(*this).ems(1) : 0; }

int PillButton::textWidth() const
{
    const Measures measures(*this);
    const int gaps = (m_symbol && !text().isEmpty()) + (!m_aside.isEmpty() && !text().isEmpty());
    return fontMetrics().horizontalAdvance(text()) + fontMetrics().horizontalAdvance(m_aside)
        + gaps * measures.units(AsideGap);
}

QSize PillButton::sizeHint() const
{
    const Measures measures(*this);
    return { symbolWidth() + textWidth() + 2 * measures.units(SidePadding), measures.fieldHeight() };
}

void PillButton::drawPill(QPainter& painter) const
{
    const Measures measures(*this);
    const int width = hasFocus() ? measures.focusFrame() : measures.hairline();
    const Ink ink = isChecked() || hasFocus() ? Ink::Focus : Ink::FieldFrame;
    painter.setPen(isChecked() || hasFocus() || m_framed ? QPen(colourOf(ink, palette()), width) : QPen(Qt::NoPen));
    if (isChecked() || isDown() || underMouse())
        painter.setBrush(colourOf(isChecked() || isDown() ? Ink::SelectionTint : Ink::HeaderStrip, palette()));
    const QRectF place = QRectF(rect()).adjusted(width / 2.0, width / 2.0, -width / 2.0, -width / 2.0);
    painter.drawRoundedRect(place, place.height() / 2, place.height() / 2);
}

void PillButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const Measures measures(*this);
    drawPill(painter);
    int left = measures.units(SidePadding);
    const QColor words = colourOf(m_quiet && !isChecked() ? Ink::Quiet : Ink::Words, palette());
    if (m_symbol) {
        drawSymbol(painter, QRect(left, 0, symbolWidth(), height()), *this, *m_symbol, colourOf(Ink::Quiet, palette()));
        left += symbolWidth() + measures.units(AsideGap);
    }
    const auto draw = [&](const QString& part, const QColor& colour) {
        painter.setPen(colour);
        painter.drawText(QRect(left, 0, width() - left, height()), Qt::AlignVCenter | Qt::AlignLeft, part);
        left += fontMetrics().horizontalAdvance(part) + (part.isEmpty() ? 0 : measures.units(AsideGap));
    };
    draw(text(), words);
    draw(m_aside, isCheckable() ? words : colourOf(Ink::Quiet, palette()));
}

}
