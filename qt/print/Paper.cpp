#include "qt/print/Paper.h"

#include "api/Printout.h"
#include "toolkit/Contrast.h"
#include "toolkit/Inks.h"
#include "toolkit/Measures.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QPainter>

namespace health {

namespace {

constexpr double PaperBodySize = 9.5; // points
constexpr double HairlineGrey = 0.22;
constexpr int PointsPerInch = 72;

QFont paperFont()
{
    QFont font = QFontDatabase::systemFont(QFontDatabase::GeneralFont);
    font.setPixelSize(static_cast<int>(PaperBodySize * PrintoutDotsPerInch / PointsPerInch));
    // Hinted for a screen, letters would have other widths than on paper.
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

QPalette blackOnWhite()
{
    QPalette palette(Qt::black, Qt::white, Qt::white, Qt::black, Qt::gray, Qt::black, Qt::white);
    palette.setColor(QPalette::Window, Qt::white);
    palette.setColor(QPalette::Highlight, Qt::black);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    return palette;
}

}

Paper::Paper()
    : body(paperFont())
    , strong(semibold(body))
    , heading(semibold(scaled(body, TypeSize::DetailsHeading)))
    , note(scaled(body, TypeSize::Note))
    , palette(blackOnWhite())
{
    const Measures measures(body);
    line = QFontMetricsF(body).lineSpacing();
    gap = measures.captionGap();
    rowGap = measures.rowGap();
    hairline = measures.hairline();
}

double Paper::widthOf(const QFont& font, const QString& text) const
{
    return QFontMetricsF(font).horizontalAdvance(text);
}

void Paper::draw(QPainter& painter, const QRectF& place, const QFont& font, const QString& text, bool quiet,
    Qt::Alignment alignment) const
{
    painter.setFont(font);
    painter.setPen(quiet ? colourOf(Ink::Quiet, palette) : QColor(Qt::black));
    painter.drawText(place, static_cast<int>(alignment | Qt::AlignTop) | Qt::TextSingleLine | Qt::TextDontClip, text);
}

void Paper::drawHairline(QPainter& painter, double left, double right, double y) const
{
    painter.setPen(QPen(mixed(Qt::black, Qt::white, HairlineGrey), hairline));
    painter.drawLine(QPointF(left, y), QPointF(right, y));
}

}
