#include "qt/course/LaneChart.h"

#include <QFontMetrics>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace health {

namespace {

// Of all that the axis shows; nothing if that is today alone.
std::optional<LaneSpan> spanOf(const LaneContent& content)
{
    std::optional<LaneSpan> span;
    const auto include = [&](Moment moment) {
        span = span ? LaneSpan { std::min(span->first, moment), std::max(span->last, moment) }
                    : LaneSpan { moment, moment };
    };
    for (const Lane& lane : content.lanes) {
        for (const LaneMark& mark : lane.marks) {
            include(mark.first);
            include(mark.last);
        }
    }
    if (!span)
        return span;
    if (content.today)
        include(*content.today);
    for (const LaneTick& tick : content.ticks)
        include(tick.day);
    return span;
}

// Draws one chart.
class LaneArtist {
public:
    LaneArtist(QPainter& painter, const LaneLayout& layout, const CourseLook& look)
        : m_painter(painter)
        , m_content(layout.content)
        , m_layout(layout)
        , m_look(look)
        , m_clip(painter.hasClipping() ? painter.clipBoundingRect().toAlignedRect() : layout.place)
    {
    }

    void draw()
    {
        m_painter.setRenderHint(QPainter::Antialiasing);
        phraseFlow(m_content.heading, m_look)
            .draw(m_painter, m_layout.place.topLeft(), m_layout.place.width(), m_layout.lineHeight);
        for (qsizetype i = 0; i < m_content.lanes.size(); ++i) {
            if (m_layout.lane(i).intersects(m_clip))
                drawLane(m_content.lanes[i], i);
        }
        if (m_layout.hasAxis())
            drawAxis();
        for (qsizetype i = 0; i < m_content.lanes.size(); ++i)
            drawMarks(m_content.lanes[i], i);
        const RunFlow note = noteFlow(m_content.note, m_look);
        const int top = m_layout.notesTop + m_layout.measures.rowGap();
        note.draw(m_painter, { m_layout.place.left(), top }, m_layout.place.width(), m_layout.lineHeight);
    }

private:
    QColor colour(Ink ink) const { return colourOf(ink, m_look.palette); }

    void drawLane(const Lane& lane, qsizetype index)
    {
        const QRect whole = m_layout.lane(index);
        if (lane.isSelected)
            m_painter.fillRect(whole, colour(Ink::SelectionTint));
        else
            m_painter.fillRect(QRect(whole.left(), whole.bottom(), whole.width(), m_layout.measures.hairline()),
                colour(Ink::Hairline));
        const QFont& font = lane.isSelected ? m_strong : m_look.font;
        const Qt::Alignment side = m_layout.isStacked ? Qt::AlignLeft : Qt::AlignRight;
        drawLine(m_painter, m_layout.label(index), side, lane.label, font,
            colour(lane.isSelected ? Ink::Words : Ink::Quiet));
        const Qt::Alignment wordsSide = m_layout.isStacked ? Qt::AlignRight : Qt::AlignLeft;
        drawLine(m_painter, m_layout.words(index), wordsSide, lane.words, font, colour(lane.wordsInk));
    }

    void drawMarks(const Lane& lane, qsizetype index)
    {
        for (const LaneMark& mark : lane.marks) {
            if (mark.changedFrom >= 0)
                drawChange(mark, index);
            if (m_layout.lane(index).intersects(m_clip))
                drawMark(
                    mark, m_layout.mark(mark, index), colour(mark.isSelected ? m_content.selectedInk : Ink::Quiet));
        }
    }

    void drawMark(const LaneMark& mark, const QRectF& place, const QColor& ink)
    {
        const double line = m_layout.measures.hairline();
        m_painter.setPen(Qt::NoPen);
        m_painter.setBrush(ink);
        switch (mark.shape) {
        case LaneMark::Shape::Dot:
            m_painter.drawEllipse(place);
            break;
        case LaneMark::Shape::Span:
            m_painter.drawRoundedRect(place, place.height() / 2, place.height() / 2);
            break;
        case LaneMark::Shape::Frame:
            m_painter.setBrush(Qt::NoBrush);
            m_painter.setPen(QPen(ink, line));
            m_painter.drawRect(place.adjusted(line / 2, line / 2, -line / 2, -line / 2));
            break;
        case LaneMark::Shape::Bar:
        case LaneMark::Shape::Tick:
            m_painter.drawRect(place);
        }
        m_painter.setBrush(Qt::NoBrush);
    }

    // An arrow from the lane before to the mark.
    void drawChange(const LaneMark& mark, qsizetype index)
    {
        const QRect to = m_layout.mark(mark, index);
        const bool isDown = mark.changedFrom < index;
        const QRect track = m_layout.track(index);
        int from = m_layout.track(mark.changedFrom).center().y();
        if (m_layout.isStacked) // not through labels
            from = isDown ? track.top() : track.bottom();
        const int tip = isDown ? to.top() - m_layout.measures.hairline() : to.bottom() + m_layout.measures.hairline();
        const int head = m_layout.dot / 2;
        const int x = m_layout.x(mark.first);
        const int back = isDown ? -head : head;
        m_painter.setPen(QPen(colour(Ink::Quiet), m_layout.measures.hairline()));
        m_painter.drawLine(x, from, x, tip);
        m_painter.drawLine(x, tip, x - head, tip + back);
        m_painter.drawLine(x, tip, x + head, tip + back);
    }

    void drawAxis()
    {
        const int line = m_layout.measures.hairline();
        m_painter.fillRect(m_layout.trackLeft, m_layout.axisTop, m_layout.trackRight - m_layout.trackLeft, line,
            colour(Ink::FieldFrame));
        for (qsizetype i = 0; m_content.today && i < m_content.lanes.size(); ++i) {
            const QRect track = m_layout.track(i);
            m_painter.fillRect(
                m_layout.x(*m_content.today) - line / 2, track.top(), line, track.height(), colour(Ink::FieldFrame));
        }
        QList<QRect> taken;
        for (const LaneTick& tick : m_content.ticks)
            drawTick(tick, taken);
    }

    void drawTick(const LaneTick& tick, QList<QRect>& taken)
    {
        const int x = m_layout.x(tick.day);
        if (std::ranges::any_of(taken, [x](const QRect& other) { return other.left() <= x && x <= other.right(); }))
            return; // most ticks of many: not worth measuring
        const QFont& font = tick.isSelected ? m_smallStrong : m_small;
        const QFontMetrics metrics(font);
        const int width = std::max(metrics.horizontalAdvance(tick.text), metrics.horizontalAdvance(tick.below)) + 1;
        const int gap = m_layout.measures.u();
        const int rightmost = m_layout.place.left() + m_layout.place.width() - width;
        const int left = std::max(m_layout.place.left(), std::min(x - width / 2, rightmost));
        const QRect where(left, m_layout.axisTop + gap, width, m_layout.notesTop - m_layout.axisTop - gap);
        const auto isHit = [&](const QRect& other) { return other.adjusted(-gap, 0, gap, 0).intersects(where); };
        if (std::ranges::any_of(taken, isHit))
            return;
        taken.append(where);
        const int line = m_layout.measures.hairline();
        m_painter.fillRect(x - line / 2, m_layout.axisTop, line, gap, colour(Ink::FieldFrame));
        const QColor ink = colour(tick.isSelected ? m_content.selectedInk : Ink::Quiet);
        const QRect first(where.left(), where.top(), width, m_layout.tickHeight);
        drawLine(m_painter, first, Qt::AlignHCenter, tick.text, font, ink);
        drawLine(m_painter, first.translated(0, m_layout.tickHeight), Qt::AlignHCenter, tick.below, font, ink);
    }

    QPainter& m_painter;
    const LaneContent& m_content;
    const LaneLayout& m_layout;
    const CourseLook& m_look;
    QRect m_clip;
    const QFont m_strong = semibold(m_look.font);
    const QFont m_small = scaled(m_look.font, TypeSize::ChartDate);
    const QFont m_smallStrong = semibold(m_small);
};

}

LaneChart::LaneChart(LaneContent content)
    : m_content(std::move(content))
    , m_span(spanOf(m_content))
{
}

int LaneChart::heightFor(int width, const CourseLook& look) const { return layOut({ 0, 0, width, 0 }, look).bottom(); }

QList<CoursePoint> LaneChart::points(const QRect& place, const CourseLook& look) const
{
    const LaneLayout layout = layOut(place, look);
    QList<CoursePoint> points;
    const auto add = [&](const QRect& where, const QString& text, int record) {
        if (!text.isEmpty())
            points.append({ where & place, text, record });
    };
    for (qsizetype i = 0; i < m_content.lanes.size(); ++i) {
        const Lane& lane = m_content.lanes[i];
        add(layout.point(lane, i), lane.text, lane.record);
        for (const LaneMark& mark : lane.marks) {
            // Larger than the mark, so that it can be hit.
            const int more = layout.measures.u();
            add(layout.mark(mark, i).adjusted(-more, -more, more, more), mark.text, mark.record);
        }
    }
    if (m_content.reading == LaneContent::Reading::ByTime)
        std::ranges::stable_sort(points, {}, [](const CoursePoint& point) { return point.place.center().x(); });
    return points;
}

void LaneChart::draw(QPainter& painter, const QRect& place, const CourseLook& look) const
{
    painter.save();
    LaneArtist(painter, layOut(place, look), look).draw();
    painter.restore();
}

}
