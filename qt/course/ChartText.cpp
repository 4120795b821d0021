#include "qt/course/ChartText.h"

#include "toolkit/Measures.h"

#include <QFontMetrics>
#include <QPainter>

namespace health {

using namespace Qt::StringLiterals;

RunFlow phraseFlow(const QList<ChartPhrase>& phrases, const CourseLook& look)
{
    const QString gap = u"      "_s;
    RunFlow flow;
    for (const ChartPhrase& phrase : phrases) {
        RunFlow::Part part { {}, phrase.breaksBefore && !flow.isEmpty() };
        const QColor quiet = colourOf(Ink::Quiet, look.palette);
        const QFont valueFont = phrase.ink == Ink::Words ? look.font : semibold(look.font);
        if (!phrase.caption.isEmpty())
            part.runs.append({ phrase.caption + (phrase.value.isEmpty() ? gap : u"  "_s), look.font, quiet });
        if (!phrase.value.isEmpty())
            part.runs.append({ phrase.value + gap, valueFont, colourOf(phrase.ink, look.palette) });
        if (!part.runs.isEmpty())
            flow.add(std::move(part));
    }
    return flow;
}

RunFlow noteFlow(const QString& note, const CourseLook& look)
{
    RunFlow flow;
    if (!note.isEmpty())
        flow.add({ { { note, scaled(look.font, TypeSize::Note), colourOf(Ink::Quiet, look.palette) } } });
    return flow;
}

void drawLine(QPainter& painter, const QRect& place, Qt::Alignment alignment, const QString& text, const QFont& font,
    const QColor& colour)
{
    if (text.isEmpty() || place.width() <= 0)
        return;
    painter.setFont(font);
    painter.setPen(colour);
    const QFontMetrics metrics(font);
    const bool isLong = metrics.horizontalAdvance(text) > place.width();
    const QString shown = isLong ? metrics.elidedText(text, Qt::ElideRight, place.width()) : text;
    painter.drawText(place, static_cast<int>(alignment | Qt::AlignVCenter) | Qt::TextSingleLine, shown);
}

}
