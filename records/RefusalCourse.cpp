#include "records/RefusalCourse.h"

#include "text/DateWords.h"
#include "text/Letters.h"

#include <algorithm>
#include <unordered_map>

namespace health {

namespace {

constexpr PieceNumber TypePiece = 4;
constexpr PieceNumber ItemPiece = 6;
constexpr PieceNumber CommentPiece = 12;

// As in the summary: the item, and its type if that is another text.
Text nameOf(const LinePieces& pieces)
{
    const TextView type = displayPart(pieces[TypePiece]);
    const TextView item = displayPart(pieces[ItemPiece]);
    if (item.empty())
        return Text(type);
    return item == type ? Text(item) : Text(item) + L" (" + properCase(type) + L")";
}

Text withComment(Text text, TextView comment) { return comment.empty() ? text : text + L": " + Text(comment); }

}

bool RefusalCourse::Item::holds(int record) const
{
    return std::ranges::find(undated, record) != undated.end()
        || std::ranges::find(refusals, record, &Refusal::record) != refusals.end();
}

Text RefusalCourse::Item::summary() const
{
    const Text times = count() == 1 ? Text(L"once") : counted(static_cast<long long>(count()), L"time");
    if (refusals.empty())
        return times + L", no readable date";
    return times + (count() == 1 ? L", " : L", last ") + whenText(refusals.back().date);
}

Text RefusalCourse::Item::wholeSummary() const
{
    if (refusals.empty() || undated.empty())
        return summary();
    return summary() + L", " + std::to_wstring(undated.size()) + L" without a readable date";
}

RefusalCourse::RefusalCourse(std::span<const ListedRecord> records)
{
    const DatedRecords found = datedRecords(records, RecordTypeNumber::Refusal);
    std::unordered_map<Text, std::size_t> places;
    const auto itemOf = [&](const LinePieces& pieces) -> Item& {
        const Text name = nameOf(pieces);
        const auto [place, isNew] = places.try_emplace(upperCase(name), m_items.size());
        if (isNew)
            m_items.push_back({ name, {}, {} });
        return m_items[place->second];
    };
    // From the latest, so that the items' order is that of their last refusals.
    for (auto dated = found.dated.rbegin(); dated != found.dated.rend(); ++dated) {
        const LinePieces pieces(records[static_cast<std::size_t>(dated->record)].line);
        itemOf(pieces).refusals.push_back({ dated->record, dated->date, Text(displayPart(pieces[CommentPiece])) });
    }
    for (const int record : found.undated)
        itemOf(LinePieces(records[static_cast<std::size_t>(record)].line)).undated.push_back(record);
    for (Item& item : m_items)
        std::ranges::reverse(item.refusals);
}

Text RefusalCourse::extent() const
{
    long long refusals = 0;
    for (const Item& item : m_items)
        refusals += static_cast<long long>(item.count());
    return counted(refusals, L"refusal") + L" of " + counted(static_cast<long long>(m_items.size()), L"item");
}

Text RefusalCourse::refusalText(const Item& item, const Refusal& refusal)
{
    return withComment(item.name + L", refused " + whenText(refusal.date), refusal.comment);
}

CourseTable RefusalCourse::table() const
{
    CourseTable table { L"Refusals by item, " + extent(), { L"Item", L"Refused", L"Dates" }, {} };
    for (const Item& item : m_items) {
        Text dates;
        for (const Refusal& refusal : item.refusals)
            dates += (dates.empty() ? L"" : L"; ") + withComment(refusal.date.text(), refusal.comment);
        table.rows.push_back({ item.name, item.wholeSummary(), dates });
    }
    return table;
}

}
