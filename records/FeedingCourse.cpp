#include "records/FeedingCourse.h"

#include "editors/frmInf.h"
#include "text/DateWords.h"
#include "text/Letters.h"

#include <algorithm>

namespace health {

using namespace std::chrono;

namespace {

constexpr PieceNumber ChoicePiece = 4;

int completedMonths(Moment from, Moment to)
{
    const year_month_day start { floor<days>(from) };
    const year_month_day end { floor<days>(to) };
    const auto whole = (end.year() / end.month() - start.year() / start.month()).count();
    return static_cast<int>(whole) - (end.day() < start.day() ? 1 : 0);
}

}

Text ageText(Moment birth, Moment day)
{
    constexpr int fewestMonths = 3;
    constexpr int mostMonths = 24;
    const auto age = floor<days>(day) - floor<days>(birth);
    if (age < days { 0 })
        return {};
    if (age < weeks { 2 })
        return counted(age.count(), L"day");
    const int months = completedMonths(birth, day);
    if (months < fewestMonths)
        return counted(floor<weeks>(age).count(), L"week");
    return months < mostMonths ? counted(months, L"month") : counted(months / 12, L"year");
}

FeedingCourse::FeedingCourse(std::span<const ListedRecord> records, const std::optional<Moment>& birth)
{
    const DatedRecords found = datedRecords(records, RecordTypeNumber::InfantFeeding);
    m_undated = found.undated.size();
    std::vector<Text> words;
    for (const DatedRecord& dated : found.dated)
        words.push_back(shownWord(pieceView(records[static_cast<std::size_t>(dated.record)].line, L"^", ChoicePiece)));
    collectChoices(words);
    for (std::size_t i = 0; i < words.size(); ++i)
        addVisit(found.dated[i], words[i], birth);
}

void FeedingCourse::collectChoices(const std::vector<Text>& words)
{
    for (const TextView choice : frmInf::Choices) {
        if (std::ranges::any_of(words, [choice](const Text& word) { return equalIgnoringCase(word, choice); }))
            m_choices.emplace_back(choice);
    }
    for (const Text& word : words) {
        const auto isSame = [&word](const Text& choice) { return equalIgnoringCase(word, choice); };
        if (!word.empty() && std::ranges::none_of(m_choices, isSame))
            m_choices.push_back(word);
    }
}

void FeedingCourse::addVisit(const DatedRecord& dated, const Text& word, const std::optional<Moment>& birth)
{
    if (word.empty()) {
        ++m_withoutChoice;
        return;
    }
    const auto choice =
        std::ranges::find_if(m_choices, [&word](const Text& known) { return equalIgnoringCase(word, known); });
    Visit visit { dated.record, dated.date, static_cast<std::size_t>(choice - m_choices.begin()), {}, {} };
    if (birth && hasDay(dated.date))
        visit.age = ageText(*birth, dated.date.start);
    if (!m_visits.empty() && m_visits.back().choice != visit.choice && isBefore(m_visits.back().date, visit.date))
        visit.before = m_choices[m_visits.back().choice];
    m_visits.push_back(std::move(visit));
}

Text FeedingCourse::extent() const
{
    int changes = 0; // also between visits whose order is not certain
    for (std::size_t i = 1; i < m_visits.size(); ++i)
        changes += m_visits[i].choice != m_visits[i - 1].choice ? 1 : 0;
    return counted(static_cast<long long>(m_visits.size()), L"visit") + L", "
        + (changes == 0 ? Text(L"no change") : counted(changes, L"change"));
}

Text FeedingCourse::note() const
{
    Text missing;
    if (m_withoutChoice > 0)
        missing = counted(static_cast<long long>(m_withoutChoice), L"visit") + L" without a choice"
            + (m_withoutChoice == 1 ? L" is not drawn." : L" are not drawn.");
    return joined({ undatedNote(m_undated, L"visit"), missing }, L" ");
}

Text FeedingCourse::visitText(const Visit& visit) const
{
    Text text = m_choices[visit.choice] + L' ' + whenText(visit.date);
    if (!visit.age.empty())
        text += L", age " + visit.age;
    return visit.before.empty() ? text : text + L"; changed from " + visit.before;
}

CourseTable FeedingCourse::table() const
{
    CourseTable table { L"Infant Feeding, " + extent(), { L"Date", L"Age", L"Choice", L"Changed from" }, {} };
    for (const Visit& visit : m_visits)
        table.rows.push_back({ visit.date.text(), visit.age, m_choices[visit.choice], visit.before });
    return table;
}

}
