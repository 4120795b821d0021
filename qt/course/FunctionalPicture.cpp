#include "qt/course/FunctionalPicture.h"

#include "qt/course/FunctionalLayout.h"
#include "toolkit/Contrast.h"
#include "toolkit/QtText.h"

#include <QPainter>
#include <QPainterPath>

namespace health {

using namespace Qt::StringLiterals;

namespace {

using Level = FunctionalCourse::Level;
using Change = FunctionalCourse::Change;
using Assessment = FunctionalCourse::Assessment;

constexpr std::size_t CountRow = FunctionalLayout::Rows - 1;

// Draws the picture at the painter's origin.
class Artist {
public:
    Artist(QPainter& painter, const FunctionalCourse& course, Ink lastInk, int width, const CourseLook& look)
        : m_painter(painter)
        , m_course(course)
        , m_lastInk(lastInk)
        , m_layout(course, width, look)
        , m_width(width)
        , m_look(look)
    {
    }

    void draw()
    {
        m_painter.setRenderHint(QPainter::Antialiasing);
        const int line = m_layout.measures().em();
        m_layout.heading().draw(m_painter, {}, m_width, line);
        for (std::size_t block = 0; block < FunctionalCourse::Blocks; ++block)
            drawBlock(block);
        for (const LegendEntry& entry : m_layout.legend())
            drawLegendEntry(entry);
        m_layout.note().draw(m_painter, { 0, m_layout.noteTop() }, m_width, line);
    }

private:
    const std::vector<Assessment>& assessments() const { return m_course.assessments(); }
    QColor colour(Ink ink) const { return colourOf(ink, m_look.palette); }

    void drawBlock(std::size_t block)
    {
        m_painter.fillRect(m_layout.lastColumn(block), colour(Ink::SelectionTint));
        drawLine(m_painter, m_layout.title(block), Qt::AlignLeft, toQString(FunctionalCourse::blockName(block)),
            m_strong, colour(Ink::Words));
        const int line = m_layout.measures().hairline();
        for (const std::size_t row : { std::size_t(1), CountRow }) {
            const QRect place = m_layout.row(block, row);
            m_painter.fillRect(place.left(), place.top(), place.width(), line, colour(Ink::Hairline));
        }
        for (std::size_t item = 0; item < FunctionalCourse::BlockItems; ++item)
            drawLine(m_painter, m_layout.name(block, item + 1), Qt::AlignRight,
                toQString(FunctionalCourse::itemName(block * FunctionalCourse::BlockItems + item)), m_look.font,
                colour(Ink::Quiet));
        drawLine(m_painter, m_layout.name(block, CountRow), Qt::AlignRight, u"independent"_s, m_look.font,
            colour(Ink::Quiet));
        for (std::size_t i = m_layout.firstAssessment(); i < assessments().size(); ++i)
            drawColumn(block, i);
    }

    void drawColumn(std::size_t block, std::size_t index)
    {
        const Assessment& assessment = assessments()[index];
        const bool isLast = m_layout.isLast(index);
        const Ink ink = isLast ? m_lastInk : Ink::Quiet;
        const auto drawText = [&](std::size_t row, const QString& text, const QFont& font) {
            QRect place = m_layout.cell(block, row, index);
            const bool isAtLeft = isLast && m_layout.hasWords();
            if (isAtLeft)
                place.setLeft(place.left() + 2 * m_layout.measures().u());
            drawLine(m_painter, place, isAtLeft ? Qt::AlignLeft : Qt::AlignHCenter, text, font, colour(ink));
        };
        drawText(0, shortDay(assessment.date), isLast ? m_smallStrong : m_small);
        for (std::size_t item = 0; item < FunctionalCourse::BlockItems; ++item)
            drawValue(m_layout.cell(block, item + 1, index),
                assessment.values.at(block * FunctionalCourse::BlockItems + item), index);
        const Text count = FunctionalCourse::countText(assessment, block);
        drawText(CountRow, count.empty() ? u"–"_s : toQString(count), isLast ? m_strong : m_look.font);
    }

    static Ink inkOf(const FunctionalCourse::Value& value)
    {
        if (value.change == Change::NeedsMoreHelp)
            return Ink::Caution;
        if (value.change == Change::NeedsLessHelp)
            return Ink::Good;
        return value.level == Level::NeedsHelp || value.level == Level::TotallyDependent ? Ink::Words : Ink::Quiet;
    }

    void drawValue(const QRect& cell, const FunctionalCourse::Value& value, std::size_t assessment)
    {
        const QColor ink = colour(inkOf(value));
        const QRect circle = m_layout.circleIn(cell, assessment);
        const bool isLast = m_layout.isLast(assessment);
        if (value.change != Change::None && !isLast)
            drawPill(circle, ink);
        drawLevel(circle, value, ink);
        if (value.change != Change::None)
            drawArrow(m_layout.arrowBeside(circle), value.change == Change::NeedsMoreHelp, ink);
        if (!isLast || !m_layout.hasWords())
            return;
        QRect words = cell;
        words.setLeft(m_layout.wordsLeft(cell));
        drawLine(m_painter, words, Qt::AlignLeft,
            value.level == Level::NotRecorded ? u"not recorded"_s : toQString(value.word),
            value.change == Change::None ? m_look.font : m_strong, ink);
    }

    // Behind a circle with its arrow.
    void drawPill(const QRect& circle, const QColor& ink)
    {
        const int gap = m_layout.measures().u();
        const QRectF place =
            QRectF(circle.united(m_layout.arrowBeside(circle))).adjusted(-gap, -gap / 2.0, gap, gap / 2.0);
        const QColor base = m_look.palette.color(QPalette::Active, QPalette::Base);
        m_painter.setPen(Qt::NoPen);
        m_painter.setBrush(mixed(ink, base, isDark(m_look.palette) ? 0.32 : 0.2));
        m_painter.drawRoundedRect(place, place.height() / 2, place.height() / 2);
        m_painter.setBrush(Qt::NoBrush);
    }

    void drawLevel(const QRect& circle, const FunctionalCourse::Value& value, const QColor& ink)
    {
        if (value.level == Level::NotRecorded || value.level == Level::Other) {
            const QString sign = value.level == Level::Other ? u"?"_s : u"–"_s;
            drawLine(m_painter, circle.adjusted(-circle.width(), -circle.height(), circle.width(), circle.height()),
                Qt::AlignHCenter, sign, m_look.font, ink);
            return;
        }
        const double line = 1.3 * m_layout.measures().hairline();
        const QRectF ring = QRectF(circle).adjusted(line / 2, line / 2, -line / 2, -line / 2);
        m_painter.setPen(QPen(ink, line));
        m_painter.setBrush(value.level == Level::TotallyDependent ? QBrush(ink) : QBrush(Qt::NoBrush));
        m_painter.drawEllipse(ring);
        m_painter.setBrush(Qt::NoBrush);
        if (value.level != Level::NeedsHelp)
            return;
        QPainterPath half;
        half.moveTo(ring.left(), ring.center().y());
        half.arcTo(ring, 180, 180);
        half.closeSubpath();
        m_painter.fillPath(half, ink);
    }

    void drawArrow(const QRect& place, bool isDown, const QColor& ink)
    {
        const double quarter = place.width() / 4.0;
        const QPointF centre = QRectF(place).center();
        const double tip = isDown ? quarter : -quarter;
        QPen pen(ink, 1.5 * m_layout.measures().hairline());
        pen.setCapStyle(Qt::RoundCap);
        pen.setJoinStyle(Qt::RoundJoin);
        m_painter.setPen(pen);
        m_painter.setBrush(Qt::NoBrush);
        m_painter.drawPolyline(QPolygonF { centre + QPointF(-1.5 * quarter, -tip / 1.3), centre + QPointF(0, tip / 1.3),
            centre + QPointF(1.5 * quarter, -tip / 1.3) });
    }

    void drawLegendEntry(const LegendEntry& entry)
    {
        const QPoint at = entry.topLeft + QPoint(0, m_layout.legendTop());
        const int height = m_layout.row(0, 0).height();
        const QRect mark(at.x(), at.y() + (height - m_layout.circle()) / 2, m_layout.circle(), m_layout.circle());
        drawLegendMark(mark, entry.mark);
        const QFont font = scaled(m_look.font, TypeSize::Note);
        const int left = mark.right() + 1 + m_layout.measures().rowGap();
        drawLine(
            m_painter, { left, at.y(), m_width - left, height }, Qt::AlignLeft, entry.text, font, colour(Ink::Quiet));
    }

    void drawLegendMark(const QRect& place, LegendEntry::Mark mark)
    {
        switch (mark) {
        case LegendEntry::Mark::NeedsMoreHelp:
            return drawArrow(place, true, colour(Ink::Caution));
        case LegendEntry::Mark::NeedsLessHelp:
            return drawArrow(place, false, colour(Ink::Good));
        case LegendEntry::Mark::Independent:
            return drawLegendLevel(place, Level::Independent);
        case LegendEntry::Mark::NeedsHelp:
            return drawLegendLevel(place, Level::NeedsHelp);
        case LegendEntry::Mark::TotallyDependent:
            return drawLegendLevel(place, Level::TotallyDependent);
        case LegendEntry::Mark::NotRecorded:
            return drawLegendLevel(place, Level::NotRecorded);
        }
    }

    void drawLegendLevel(const QRect& place, Level level)
    {
        FunctionalCourse::Value value;
        value.level = level;
        drawLevel(place, value, colour(Ink::Quiet));
    }

    QPainter& m_painter;
    const FunctionalCourse& m_course;
    Ink m_lastInk;
    const FunctionalLayout m_layout;
    int m_width;
    const CourseLook& m_look;
    const QFont m_strong = semibold(m_look.font);
    const QFont m_small = scaled(m_look.font, TypeSize::ChartDate);
    const QFont m_smallStrong = semibold(m_small);
};

}

FunctionalPicture::FunctionalPicture(const CourseSource& source)
    : m_course(source.records, source.selected)
{
    m_isOfCurrentVisit = source.records[static_cast<std::size_t>(source.selected)].isOfCurrentVisit;
}

int FunctionalPicture::heightFor(int width, const CourseLook& look) const
{
    return FunctionalLayout(m_course, width, look).height();
}

void FunctionalPicture::draw(QPainter& painter, const QRect& place, const CourseLook& look) const
{
    painter.save();
    painter.translate(place.topLeft());
    Artist(painter, m_course, m_isOfCurrentVisit ? Ink::Visit : Ink::Words, place.width(), look).draw();
    painter.restore();
}

QList<CoursePoint> FunctionalPicture::points(const QRect& place, const CourseLook& look) const
{
    const FunctionalLayout layout(m_course, place.width(), look);
    const std::vector<Assessment>& assessments = m_course.assessments();
    QList<CoursePoint> points;
    for (std::size_t block = 0; block < FunctionalCourse::Blocks; ++block) {
        for (std::size_t row = 1; row < FunctionalLayout::Rows; ++row) {
            for (std::size_t i = layout.firstAssessment(); i < assessments.size(); ++i) {
                const Text text = row == CountRow
                    ? FunctionalCourse::countSentence(assessments[i], block)
                    : FunctionalCourse::valueText(assessments[i], block * FunctionalCourse::BlockItems + row - 1);
                const QRect cell = layout.cell(block, row, i).translated(place.topLeft());
                points.append({ cell & place, toQString(text), assessments[i].record });
            }
        }
    }
    return points;
}

}
