#include "qt/course/LaneLayout.h"

#include <QFontMetrics>

#include <algorithm>

namespace health {

namespace {

constexpr double NarrowestTrack = 14; // em, between a label and words
constexpr double NarrowestTrackAlone = 7; // em, beside a label only
constexpr double WidestLabelPart = 0.4; // of the whole width
constexpr double DotSize = 0.5; // em
constexpr double LaneHeight = 1.42; // em
constexpr double BarHeight = 0.62; // em

bool hasSecondTickLine(const LaneContent& content)
{
    return std::ranges::any_of(content.ticks, [](const LaneTick& tick) { return !tick.below.isEmpty(); });
}

}

LaneLayout::LaneLayout(
    const LaneContent& laid, const std::optional<LaneSpan>& axis, const QRect& whole, const CourseLook& look)
    : content(laid)
    , span(axis)
    , place(whole)
    , measures(look.font)
    , lineHeight(measures.em())
    , dot(measures.ems(DotSize) | 1)
    , laneHeight(measures.ems(LaneHeight))
{
    divideWidth(look);
    const RunFlow heading = phraseFlow(content.heading, look);
    lanesTop = place.top();
    if (!heading.isEmpty())
        lanesTop += heading.heightFor(place.width(), lineHeight) + measures.rowGap();
    axisTop = lanesTop + static_cast<int>(content.lanes.size()) * laneHeight;
    tickHeight = QFontMetrics(scaled(look.font, TypeSize::ChartDate)).height();
    notesTop = axisTop;
    if (hasAxis())
        notesTop += measures.u() + tickHeight * (hasSecondTickLine(content) ? 2 : 1);
    const RunFlow note = noteFlow(content.note, look);
    notesHeight = note.isEmpty() ? 0 : measures.rowGap() + note.heightFor(place.width(), lineHeight);
}

void LaneLayout::divideWidth(const CourseLook& look)
{
    const QFontMetrics metrics(semibold(look.font));
    for (const Lane& lane : content.lanes) {
        labelWidth = std::max(labelWidth, metrics.horizontalAdvance(lane.label));
        ownWords.append(metrics.horizontalAdvance(lane.words));
        wordsWidth = std::max(wordsWidth, ownWords.last());
    }
    const int padding = measures.u(); // within the selected lane's tint
    trackLeft = place.left() + padding;
    trackRight = place.left() + place.width() - padding;
    const auto withGap = [this](int width) { return width > 0 ? width + measures.captionGap() : 0; };
    const int beside = std::min(labelWidth, static_cast<int>(place.width() * WidestLabelPart));
    const int track = trackRight - trackLeft - withGap(beside) - withGap(wordsWidth);
    const bool isNarrow = wordsWidth > 0 ? track < measures.ems(NarrowestTrack)
                                         : beside < labelWidth || track < measures.ems(NarrowestTrackAlone);
    isStacked = labelWidth > 0 && isNarrow;
    if (isStacked) {
        laneHeight += measures.em();
        return;
    }
    labelWidth = beside;
    trackLeft += withGap(labelWidth);
    trackRight -= withGap(wordsWidth);
}

QRect LaneLayout::lane(qsizetype index) const
{
    return { place.left(), lanesTop + static_cast<int>(index) * laneHeight, place.width(), laneHeight };
}

QRect LaneLayout::label(qsizetype index) const
{
    const QRect whole = lane(index);
    const int left = whole.left() + measures.u();
    if (!isStacked)
        return { left, whole.top(), labelWidth, laneHeight };
    const QRect beside = words(index);
    const int right = beside.width() > 0 ? beside.left() - measures.captionGap() : whole.right() + 1 - measures.u();
    return { left, whole.top(), std::max(0, right - left), beside.height() };
}

// Above the marks, long words leave a third of the width to the label.
QRect LaneLayout::words(qsizetype index) const
{
    const QRect whole = lane(index);
    const int right = whole.right() + 1 - measures.u();
    if (!isStacked)
        return { right - wordsWidth, whole.top(), wordsWidth, laneHeight };
    const int width = std::min(ownWords[index], whole.width() * 2 / 3 - measures.captionGap());
    return { right - width, whole.top(), width, measures.em() + measures.u() };
}

QRect LaneLayout::track(qsizetype index) const
{
    const QRect whole = lane(index);
    const int top = isStacked ? label(index).bottom() + 1 : whole.top();
    return { trackLeft, top, trackRight - trackLeft, whole.bottom() + 1 - top };
}

// The first and the last moment keep a dot's room from the ends. A single moment stands in the middle.
int LaneLayout::x(Moment moment) const
{
    const int left = trackLeft + dot;
    const int right = std::max(left, trackRight - 1 - dot);
    const auto whole = (span->last - span->first).count();
    if (whole == 0)
        return (left + right) / 2;
    const double part = static_cast<double>((moment - span->first).count()) / static_cast<double>(whole);
    return left + qRound(part * (right - left));
}

QRect LaneLayout::mark(const LaneMark& mark, qsizetype lane) const
{
    const QRect room = track(lane);
    const int left = x(mark.first);
    const int right = x(mark.last);
    if (mark.shape == LaneMark::Shape::Dot) {
        const int size = mark.isSelected ? dot + 2 * measures.hairline() : dot;
        QRect circle(0, 0, size, size);
        circle.moveCenter({ left, room.center().y() });
        return circle;
    }
    if (mark.shape == LaneMark::Shape::Tick)
        return { left - measures.hairline() / 2, room.top() + (room.height() - measures.ems(BarHeight)) / 2,
            measures.hairline(), measures.ems(BarHeight) };
    const int height = mark.shape == LaneMark::Shape::Span ? dot / 2 : measures.ems(BarHeight);
    const int top = room.top() + (room.height() - height) / 2;
    return { left, top, std::max(right - left, measures.hairline()), height };
}

QRect LaneLayout::point(const Lane& lane, qsizetype index) const
{
    const bool hasPoints = std::ranges::any_of(lane.marks, [](const LaneMark& mark) { return !mark.text.isEmpty(); });
    return hasPoints ? label(index) : this->lane(index);
}

}
