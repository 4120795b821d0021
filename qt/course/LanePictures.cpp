#include "qt/course/LanePictures.h"

#include "qt/course/LaneChart.h"
#include "records/ContractCourse.h"
#include "records/FeedingCourse.h"
#include "records/RefusalCourse.h"
#include "records/ReproductiveCourse.h"
#include "text/DateWords.h"
#include "toolkit/QtText.h"

#include <algorithm>

namespace health {

using namespace Qt::StringLiterals;

namespace {

Lane laneOf(const Text& label, const Text& words = {}, const Text& text = {})
{
    Lane lane;
    lane.label = toQString(label);
    lane.words = toQString(words);
    lane.text = toQString(text);
    return lane;
}

class LanePicture : public CoursePicture {
public:
    LanePicture(LaneContent content, CourseTable table)
        : m_chart(std::move(content))
        , m_table(std::move(table))
    {
    }

    int heightFor(int width, const CourseLook& look) const override { return m_chart.heightFor(width, look); }
    void draw(QPainter& painter, const QRect& place, const CourseLook& look) const override
    {
        m_chart.draw(painter, place, look);
    }
    QList<CoursePoint> points(const QRect& place, const CourseLook& look) const override
    {
        return m_chart.points(place, look);
    }
    CourseTable table() const override { return m_table; }

private:
    LaneChart m_chart;
    CourseTable m_table;
};

std::optional<Moment> birthDay(const CourseSource& source)
{
    const TextView date = source.birthDate; // "1996-04-02"
    if (date.size() != 10)
        return std::nullopt;
    return parseDate(joined({ date.substr(5, 2), date.substr(8, 2), date.substr(0, 4) }, L"/"));
}

// A picture has room for the first lanes and the selected one; the table has all.
constexpr std::size_t MostLanes = 40;

void limitLanes(LaneContent& content, TextView unit)
{
    const qsizetype all = content.lanes.size();
    std::size_t kept = 0;
    content.lanes.removeIf([&kept](const Lane& lane) { return ++kept > MostLanes && !lane.isSelected; });
    const qsizetype left = all - content.lanes.size();
    if (left > 0)
        content.note = toQString(L"The table also has " + counted(left, unit) + L" more.");
}

Ink selectedInk(const CourseSource& source)
{
    return source.records[static_cast<std::size_t>(source.selected)].isOfCurrentVisit ? Ink::Visit : Ink::Words;
}

LaneMark markOf(const RecordDate& date, int record, const CourseSource& source)
{
    LaneMark mark;
    mark.first = date.start;
    mark.last = hasDay(date) ? date.start : lastMoment(date);
    mark.shape = hasDay(date) ? LaneMark::Shape::Dot : LaneMark::Shape::Span;
    mark.day = toQString(date.dayText());
    mark.record = record;
    mark.isSelected = record == source.selected;
    return mark;
}

// A bar is labelled where it begins.
Moment tickPlace(const LaneMark& mark)
{
    return mark.shape == LaneMark::Shape::Span ? mark.first + (mark.last - mark.first) / 2 : mark.first;
}

// The selected days first, then today, then the ends.
void sortTicks(LaneContent& content)
{
    QList<LaneTick>& ticks = content.ticks;
    std::ranges::sort(ticks, {}, &LaneTick::day);
    if (ticks.size() > 1)
        ticks.move(ticks.size() - 1, 0);
    if (ticks.size() > 2)
        ticks.move(1, 2);
    const auto others =
        std::stable_partition(ticks.begin(), ticks.end(), [](const LaneTick& tick) { return tick.isSelected; });
    if (content.today)
        ticks.insert(others, { *content.today, u"today"_s, {}, false });
}

void addTicks(LaneContent& content)
{
    for (const Lane& lane : content.lanes) {
        for (const LaneMark& mark : lane.marks)
            content.ticks.append({ tickPlace(mark), mark.day, {}, mark.isSelected });
    }
    sortTicks(content);
}

}

std::unique_ptr<CoursePicture> feedingPicture(const CourseSource& source)
{
    const FeedingCourse course(source.records, birthDay(source));
    if (course.choices().size() > MostLanes) // texts that are no choices
        return nullptr;
    LaneContent content;
    content.heading = { { toQString(course.extent()), {} } };
    content.selectedInk = selectedInk(source);
    content.reading = LaneContent::Reading::ByTime;
    content.note = toQString(course.note());
    for (const Text& choice : course.choices())
        content.lanes.append(laneOf(choice));
    int lane = -1;
    for (const FeedingCourse::Visit& visit : course.visits()) {
        LaneMark mark = markOf(visit.date, visit.record, source);
        mark.text = toQString(course.visitText(visit));
        mark.changedFrom = visit.before.empty() ? -1 : lane;
        lane = static_cast<int>(visit.choice);
        content.lanes[lane].isSelected = content.lanes[lane].isSelected || mark.isSelected;
        if (visit.age.empty())
            content.ticks.append({ tickPlace(mark), mark.day, {}, mark.isSelected });
        else
            content.ticks.append({ tickPlace(mark), toQString(visit.age), mark.day, mark.isSelected });
        content.lanes[lane].marks.append(std::move(mark));
    }
    sortTicks(content);
    return std::make_unique<LanePicture>(std::move(content), course.table());
}

std::unique_ptr<CoursePicture> reproductivePicture(const CourseSource& source)
{
    using EventKind = ReproductiveCourse::Event::Kind;
    const ReproductiveCourse course(source.records, source.selected, source.now);
    LaneContent content;
    for (const ReproductiveCourse::Count& count : course.counts()) {
        if (!count.number.empty())
            content.heading.append({ toQString(count.name), toQString(count.number) });
    }
    for (const Text& statement : course.statements())
        content.heading.append({ {}, toQString(statement), Ink::Words, true });
    Lane lane;
    QList<LaneTick> between; // less important than the ends
    for (const ReproductiveCourse::Event& event : course.events()) {
        const bool isEnd = event.kind == EventKind::LastPeriod || event.kind == EventKind::Delivery;
        LaneMark mark;
        mark.first = mark.last = event.day;
        mark.text = toQString(event.text);
        mark.record = course.record();
        mark.isSelected = isEnd;
        if (event.kind == EventKind::SecondTrimester || event.kind == EventKind::ThirdTrimester)
            mark.shape = LaneMark::Shape::Tick;
        const LaneTick tick { event.day, toQString(event.name), toQString(dateText(event.day)), isEnd };
        (isEnd ? content.ticks : between).append(tick);
        lane.marks.append(std::move(mark));
    }
    content.today = dateOf(source.now);
    const auto today = std::ranges::find(between, u"today"_s, &LaneTick::text);
    if (today != between.end())
        std::rotate(between.begin(), today, today + 1);
    content.ticks += between;
    if (lane.marks.size() > 1) // else there is only today
        content.lanes.append(std::move(lane));
    else
        content.ticks.clear();
    return std::make_unique<LanePicture>(std::move(content), course.table());
}

std::unique_ptr<CoursePicture> refusalPicture(const CourseSource& source)
{
    const RefusalCourse course(source.records);
    LaneContent content;
    content.heading = { { toQString(course.extent()), {} } };
    content.selectedInk = selectedInk(source);
    for (const RefusalCourse::Item& item : course.items()) {
        Lane lane = laneOf(item.name, item.summary(), item.name + L": " + item.wholeSummary());
        lane.isSelected = item.holds(source.selected);
        lane.record = item.refusals.empty() ? item.undated.front() : item.refusals.back().record;
        for (const RefusalCourse::Refusal& refusal : item.refusals) {
            LaneMark mark = markOf(refusal.date, refusal.record, source);
            mark.text = toQString(RefusalCourse::refusalText(item, refusal));
            lane.marks.append(std::move(mark));
        }
        content.lanes.append(std::move(lane));
    }
    limitLanes(content, L"item");
    addTicks(content);
    return std::make_unique<LanePicture>(std::move(content), course.table());
}

std::unique_ptr<CoursePicture> contractPicture(const CourseSource& source)
{
    const ContractCourse course(source.records, source.now);
    LaneContent content;
    content.heading = { { toQString(course.extent()), {} } };
    content.selectedInk = selectedInk(source);
    content.today = source.now;
    for (const ContractCourse::Contract& contract : course.contracts()) {
        const bool isPast = contract.state == ContractCourse::State::RanOut;
        const bool isRunning = contract.state == ContractCourse::State::Running;
        Lane lane = laneOf(ContractCourse::name(contract), contract.words, ContractCourse::contractText(contract));
        lane.wordsInk = isPast ? Ink::Quiet : Ink::Words;
        lane.record = contract.record;
        lane.isSelected = contract.record == source.selected;
        if (contract.initiated) {
            LaneMark bar;
            bar.shape = isRunning ? LaneMark::Shape::Bar : LaneMark::Shape::Frame;
            bar.first = contract.initiated->start;
            bar.last = contract.end;
            bar.day = toQString(contract.initiated->dayText());
            bar.isSelected = lane.isSelected;
            lane.marks.append(std::move(bar));
        }
        content.lanes.append(std::move(lane));
    }
    limitLanes(content, L"contract");
    addTicks(content);
    return std::make_unique<LanePicture>(std::move(content), course.table());
}

}
