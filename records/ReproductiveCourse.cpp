#include "records/ReproductiveCourse.h"

#include "editors/DueDate.h"
#include "records/CourseDates.h"
#include "text/DateWords.h"
#include "text/Letters.h"

#include <algorithm>
#include <array>

namespace health {

using namespace std::chrono;

namespace {

using Kind = ReproductiveCourse::Event::Kind;

enum HistoryPiece : PieceNumber {
    CountsPiece = 1,
    PeriodPiece = 2,
    MethodPiece = 5,
    DeliveryPiece = 6,
};

struct CountName {
    TextView code;
    TextView name;
};

constexpr std::array<CountName, 5> Counts { { { L"G", L"Gravidity" }, { L"P", L"Parity" },
    { L"LC", L"Living Children" }, { L"SA", L"Spontaneous Abortions" }, { L"TA", L"Therapeutic Abortions" } } };

// By completed weeks since the last menstrual period.
constexpr weeks SecondTrimester { 14 };
constexpr weeks ThirdTrimester { 28 };

// The one or two digits after a code.
Text numberAfter(TextView code, TextView counts)
{
    const std::size_t found = counts.find(code);
    if (found == TextView::npos)
        return {};
    const TextView rest = counts.substr(found + code.size());
    const auto end = std::find_if_not(rest.begin(), rest.end(), isDigit);
    return Text(rest.substr(0, std::min<std::size_t>(2, static_cast<std::size_t>(end - rest.begin()))));
}

}

ReproductiveCourse::ReproductiveCourse(std::span<const ListedRecord> records, int record, Moment now)
    : m_record(record)
    , m_now(now)
{
    const LinePieces pieces(records[static_cast<std::size_t>(record)].line);
    const TextView method = displayPart(pieces[MethodPiece]);
    const TextView delivery = displayPart(pieces[DeliveryPiece]);
    m_isPregnant = !method.empty() || !delivery.empty();
    readCounts(displayPart(pieces[CountsPiece]));
    addLastPeriod(displayPart(pieces[PeriodPiece]));
    addEvent(Kind::Today, L"today", now);
    if (m_isPregnant)
        addDelivery(delivery, method);
    else
        m_statements.emplace_back(L"No pregnancy recorded");
    if (m_isPregnant && m_lastPeriod)
        compareDates();
    std::ranges::stable_sort(m_events, {}, &Event::day);
}

void ReproductiveCourse::readCounts(TextView counts)
{
    for (const CountName& count : Counts)
        m_counts.push_back({ Text(count.name), numberAfter(count.code, upperCase(counts)) });
}

void ReproductiveCourse::addEvent(Event::Kind kind, TextView name, Moment day, TextView words)
{
    const Text text = Text(name) + L": " + dateText(day);
    m_events.push_back({ kind, Text(name), dateOf(day), joined({ text, words }, L", ") });
}

// Says what is missing unless the piece is a date with a day.
std::optional<Moment> ReproductiveCourse::readDay(TextView name, TextView piece)
{
    const auto date = readRecordDate(piece);
    if (date && hasDay(*date))
        return dateOf(date->start);
    m_statements.push_back(piece.empty() ? Text(name) + L" not recorded"
                                         : Text(name) + L": " + Text(piece) + L", which is not a full date");
    return std::nullopt;
}

void ReproductiveCourse::addLastPeriod(TextView piece)
{
    m_lastPeriodText = piece;
    const auto day = readDay(L"LMP", piece);
    if (!day)
        return;
    addEvent(Kind::LastPeriod, L"LMP", *day);
    if (*day > dateOf(m_now))
        m_statements.push_back(L"LMP: " + dateText(*day) + L", which is in the future");
    else
        m_lastPeriod = day;
}

void ReproductiveCourse::addDelivery(TextView piece, TextView method)
{
    m_deliveryText = piece;
    m_method = shownWord(method);
    const Text determined = m_method.empty() ? Text() : L"determined by " + m_method;
    m_delivery = readDay(L"Estimated delivery", piece);
    if (!m_delivery) {
        if (!determined.empty())
            m_statements.back() += L"; " + determined;
        return;
    }
    addEvent(Kind::Delivery, L"estimated delivery", *m_delivery, determined);
    const Text distance = *m_delivery < dateOf(m_now) ? L"which has passed" : distanceName(*m_delivery, m_now);
    m_statements.push_back(joined({ L"Estimated delivery: " + dateText(*m_delivery), distance, determined }, L", "));
}

// Neither of the days on which the pregnancy ends has passed.
bool ReproductiveCourse::isUnderWay() const
{
    const Moment today = dateOf(m_now);
    return dueDate(*m_lastPeriod) >= today && (!m_delivery || *m_delivery >= today);
}

void ReproductiveCourse::compareDates()
{
    const Moment due = dueDate(*m_lastPeriod);
    if (isUnderWay()) {
        m_age = weeksAndDays(floor<days>(m_now) - floor<days>(*m_lastPeriod));
        m_statements.insert(m_statements.begin(), L"Today " + m_age + L" since the LMP");
        const auto today = std::ranges::find(m_events, Kind::Today, &Event::kind);
        today->text += L", " + m_age + L" since the LMP";
    }
    const bool hasPassed = due < dateOf(m_now);
    if (!m_delivery || *m_delivery != due) {
        Text words = L"280 days after the LMP: " + dateText(due) + (hasPassed ? L", which has passed" : L"");
        const auto later = m_delivery ? floor<days>(due) - floor<days>(*m_delivery) : days { 0 };
        if (m_delivery)
            words += L", " + counted(abs(later).count(), L"day") + (later > days { 0 } ? L" later" : L" earlier")
                + L" than the estimate";
        m_statements.push_back(words);
    } else if (isUnderWay()) {
        addEvent(Kind::SecondTrimester, L"14 weeks", *m_lastPeriod + SecondTrimester, L"the second trimester begins");
        addEvent(Kind::ThirdTrimester, L"28 weeks", *m_lastPeriod + ThirdTrimester, L"the third trimester begins");
    }
}

CourseTable ReproductiveCourse::table() const
{
    CourseTable table { L"Reproductive History", { L"Item", L"Value" }, {} };
    for (const Count& count : m_counts)
        table.rows.push_back({ count.name, count.number });
    table.rows.push_back({ L"LMP", m_lastPeriodText });
    table.rows.push_back({ L"Today", joined({ dateText(m_now), m_age }, L", ") });
    table.rows.push_back({ L"Estimated Delivery", m_deliveryText });
    table.rows.push_back({ L"Determined by", m_method });
    for (const Text& statement : m_statements)
        table.rows.push_back({ L"", statement });
    return table;
}

}
