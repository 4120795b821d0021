#include "records/FunctionalCourse.h"

#include "text/DateWords.h"
#include "text/Letters.h"

#include <algorithm>
#include <optional>

namespace health {

namespace {

using Level = FunctionalCourse::Level;
using Change = FunctionalCourse::Change;
using Value = FunctionalCourse::Value;
using Assessment = FunctionalCourse::Assessment;

constexpr PieceNumber StatusPiece = 16;
constexpr PieceNumber CaregiverPiece = 17;
constexpr std::array<TextView, FunctionalCourse::Blocks> BlockNames { L"Activities of Daily Living",
    L"Instrumental Activities of Daily Living" };

// A form's caption without its access key.
Text plainCaption(TextView label) { return replaced(label, L"&", L""); }

Level levelOf(TextView word)
{
    if (word.empty())
        return Level::NotRecorded;
    const auto& levels = FunctionalItems[0].choices;
    for (std::size_t i = 0; i < levels.size(); ++i) {
        if (equalIgnoringCase(levels[i], word))
            return static_cast<Level>(static_cast<std::size_t>(Level::Independent) + i);
    }
    return Level::Other;
}

bool isKnown(Level level) { return level != Level::NotRecorded && level != Level::Other; }

Assessment assessmentOf(const DatedRecord& dated, TextView line)
{
    Assessment assessment;
    assessment.record = dated.record;
    assessment.date = dated.date;
    const LinePieces pieces(line);
    for (std::size_t item = 0; item < assessment.values.size(); ++item) {
        Value& value = assessment.values[item];
        value.word = shownWord(pieces[FirstFunctionalPiece + static_cast<PieceNumber>(item)]);
        value.level = levelOf(value.word);
    }
    assessment.statusChange = shownWord(pieces[StatusPiece]);
    assessment.caregiver = shownWord(pieces[CaregiverPiece]);
    return assessment;
}

// Where an item stood last, while going through the assessments from the oldest. Assessments whose order is not certain
// are not compared with each other.
class LastLevel {
public:
    void compare(Value& value, const RecordDate& date)
    {
        if (!isKnown(value.level))
            return;
        if (m_pending && isBefore(m_pending->date, date))
            m_last = m_pending;
        if (m_last && isBefore(m_last->date, date) && m_last->level != value.level) {
            value.change = value.level > m_last->level ? Change::NeedsMoreHelp : Change::NeedsLessHelp;
            value.before = m_last->word + L' ' + whenText(m_last->date);
        }
        m_pending = { value.level, value.word, date };
    }

private:
    struct Known {
        Level level;
        Text word;
        RecordDate date;
    };

    std::optional<Known> m_last;
    std::optional<Known> m_pending; // the newest
};

Text withChange(const Value& value)
{
    switch (value.change) {
    case Change::NeedsMoreHelp:
        return value.word + L", needs more help than before";
    case Change::NeedsLessHelp:
        return value.word + L", needs less help than before";
    default:
        return value.word;
    }
}

}

FunctionalCourse::FunctionalCourse(std::span<const ListedRecord> records, int selected)
{
    const DatedRecords found = datedRecords(records, RecordTypeNumber::FunctionalStatus);
    m_total = found.dated.size();
    m_undated = found.undated.size();
    const auto at = std::ranges::find(found.dated, selected, &DatedRecord::record);
    if (at == found.dated.end())
        return;
    m_position = static_cast<std::size_t>(at - found.dated.begin()) + 1;

    std::array<LastLevel, InstrumentalItems> last;
    for (std::size_t i = 0; i < m_position; ++i) {
        const DatedRecord& dated = found.dated[i];
        Assessment assessment = assessmentOf(dated, records[static_cast<std::size_t>(dated.record)].line);
        for (std::size_t item = 0; item < InstrumentalItems; ++item)
            last[item].compare(assessment.values[item], dated.date);
        if (m_position - i <= MostAssessments)
            m_assessments.push_back(std::move(assessment));
    }
}

Text FunctionalCourse::itemName(std::size_t item) { return plainCaption(FunctionalItems.at(item).label); }

TextView FunctionalCourse::blockName(std::size_t block) { return BlockNames.at(block); }

FunctionalCourse::Count FunctionalCourse::count(const Assessment& assessment, std::size_t block)
{
    Count count;
    for (std::size_t item = block * BlockItems; item < (block + 1) * BlockItems; ++item) {
        const Level level = assessment.values.at(item).level;
        count.independent += level == Level::Independent ? 1 : 0;
        count.recorded += isKnown(level) ? 1 : 0;
    }
    return count;
}

Text FunctionalCourse::countText(const Assessment& assessment, std::size_t block)
{
    const Count items = count(assessment, block);
    return items.recorded == 0 ? Text()
                               : std::to_wstring(items.independent) + L" of " + std::to_wstring(items.recorded);
}

Text FunctionalCourse::extent(std::size_t shown) const
{
    const Text all = counted(static_cast<long long>(m_total), L"assessment");
    if (shown == m_total)
        return all;
    if (m_position == m_total)
        return L"last " + (shown == 1 ? Text() : std::to_wstring(shown) + L' ') + L"of " + all;
    const Text last = std::to_wstring(m_position);
    if (shown == 1)
        return L"assessment " + last + L" of " + std::to_wstring(m_total);
    return L"assessments " + std::to_wstring(m_position - shown + 1) + L" to " + last + L" of "
        + std::to_wstring(m_total);
}

Text FunctionalCourse::valueText(const Assessment& assessment, std::size_t item)
{
    const Value& value = assessment.values.at(item);
    Text text = itemName(item) + L' ' + whenText(assessment.date) + L": ";
    text += value.level == Level::NotRecorded ? Text(L"not recorded") : withChange(value);
    return value.before.empty() ? text : text + L" (" + value.before + L")";
}

Text FunctionalCourse::countSentence(const Assessment& assessment, std::size_t block)
{
    const Text items = countText(assessment, block);
    return Text(blockName(block)) + L' ' + whenText(assessment.date) + L": "
        + (items.empty() ? Text(L"no item recorded") : L"independent in " + items + L" recorded items");
}

std::vector<Text> FunctionalCourse::itemRow(std::size_t item) const
{
    std::vector<Text> row { itemName(item) };
    for (const Assessment& assessment : m_assessments)
        row.push_back(withChange(assessment.values.at(item)));
    return row;
}

CourseTable FunctionalCourse::table() const
{
    CourseTable table { L"Functional Status, " + extent(m_assessments.size()), { L"Item" }, {} };
    const auto add = [&](Text name, auto valueOf) {
        std::vector<Text>& row = table.rows.emplace_back();
        row.push_back(std::move(name));
        for (const Assessment& assessment : m_assessments)
            row.push_back(valueOf(assessment));
    };
    for (const Assessment& assessment : m_assessments)
        table.headings.push_back(assessment.date.text());
    for (std::size_t block = 0; block < Blocks; ++block) {
        for (std::size_t item = block * BlockItems; item < (block + 1) * BlockItems; ++item)
            table.rows.push_back(itemRow(item));
        add(Text(blockName(block)) + L", independent",
            [block](const Assessment& assessment) { return countText(assessment, block); });
    }
    add(itemName(InstrumentalItems), [](const Assessment& assessment) { return assessment.statusChange; });
    add(itemName(InstrumentalItems + 1), [](const Assessment& assessment) { return assessment.caregiver; });
    return table;
}

}
