#include "qt/ToneLabel.h"

#include "qt/Inks.h"
#include "qt/Measures.h"

#include <QPainter>
#include <QStyle>

#include <algorithm>

namespace health {

namespace {

Ink inkOf(Tone tone)
{
    switch (tone) {
    case Tone::Good:
        return Ink::Good;
    case Tone::Caution:
        return Ink::Caution;
    case Tone::Error:
        return Ink::Error;
    case Tone::Quiet:
        break;
    }
    return Ink::Quiet;
}

void drawCheckMark(QPainter& painter, const QRectF& box)
{
    const double side = box.width();
    painter.drawPolyline(QPolygonF { box.topLeft() + QPointF(0.05, 0.55) * side,
        box.topLeft() + QPointF(0.35, 0.85) * side, box.topLeft() + QPointF(0.95, 0.2) * side });
}

void drawExclamation(QPainter& painter, const QRectF& box)
{
    const double side = box.width();
    painter.drawEllipse(box);
    painter.drawLine(box.center() - QPointF(0, 0.26) * side, box.center() + QPointF(0, 0.06) * side);
    painter.drawPoint(box.center() + QPointF(0, 0.26) * side);
}

}

ToneLabel::ToneLabel(double size)
{
    if (size < 1) // otherwise it follows its window's font
        setFont(scaled(font(), size));
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    hide();
}

void ToneLabel::say(const QString& text, Tone tone)
{
    if (text == this->text() && tone == m_tone)
        return;
    m_tone = tone;
    setText(text);
    updateGeometry();
    update();
    showRoom();
}

void ToneLabel::keepLine()
{
    m_keepsLine = true;
    showRoom();
}

void ToneLabel::keepCharacters(int characters)
{
    m_kept = fontMetrics().averageCharWidth() * characters;
    updateGeometry();
}

int ToneLabel::symbolWidth() const { return m_tone == Tone::Quiet || text().isEmpty() ? 0 : Measures(*this).ems(1.1); }

int ToneLabel::textWidth() const { return text().isEmpty() ? 0 : fontMetrics().horizontalAdvance(text()) + 1; }

QSize ToneLabel::sizeHint() const { return { std::max(m_kept, textWidth() + symbolWidth()), fontMetrics().height() }; }

QSize ToneLabel::minimumSizeHint() const { return { m_kept, fontMetrics().height() }; }

// Lines break between words; only a word that is too long for a line is broken itself.
Qt::TextFlag ToneLabel::wrapping(int room) const
{
    const QStringList words = text().split(u' ');
    const bool isTooLong = std::any_of(
        words.begin(), words.end(), [&](const QString& word) { return fontMetrics().horizontalAdvance(word) > room; });
    return isTooLong ? Qt::TextWrapAnywhere : Qt::TextWordWrap;
}

int ToneLabel::heightForWidth(int width) const
{
    const QRect room(0, 0, std::max(1, width - symbolWidth()), 100'000);
    const int needed = fontMetrics().boundingRect(room, wrapping(room.width()), text()).height();
    return std::max(fontMetrics().height(), needed);
}

void ToneLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    QPalette inked = palette();
    inked.setColor(QPalette::WindowText, colourOf(inkOf(m_tone), palette()));
    const QRect place = rect().adjusted(symbolWidth(), 0, 0, 0);
    const int line = fontMetrics().height();
    // Beside a field that is higher than the text.
    const int top = std::max(0, (height() - heightForWidth(width())) / 2);
    style()->drawItemText(&painter, place.adjusted(0, top, 0, 0),
        int(Qt::AlignLeft) | int(Qt::AlignTop) | wrapping(place.width()), inked, true, text(), QPalette::WindowText);
    if (symbolWidth() == 0)
        return;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(inked.color(QPalette::WindowText), line / 11.0, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    const double side = line * 0.66;
    const QRectF box(line / 20.0 + 0.5, top + (line - side) / 2, side, side);
    if (m_tone == Tone::Good)
        drawCheckMark(painter, box);
    else
        drawExclamation(painter, box);
}

}
