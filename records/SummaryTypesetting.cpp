#include "records/SummaryTypesetting.h"

#include "records/CourseDates.h"
#include "text/FileManDates.h"

#include <algorithm>

namespace health {

namespace {

constexpr PieceNumber ReproductiveCountsPiece = 1;
constexpr PieceNumber RefusalTypePiece = 4;
constexpr PieceNumber RefusalItemPiece = 6;
constexpr PieceNumber RefusalCommentPiece = 12;
constexpr TextView SeparatorText = L"; ";

// Takes runs from the beginning of a summary.
class Typesetter {
public:
    explicit Typesetter(TextView summary)
        : m_rest(summary)
    {
    }

    void take(SummaryPart part, std::size_t length, bool isChanged = false)
    {
        const TextView text = m_rest.substr(0, length);
        if (!text.empty())
            m_runs.push_back({ part, text, isChanged });
        m_rest.remove_prefix(text.size());
    }

    bool takeText(SummaryPart part, TextView text)
    {
        if (!m_rest.starts_with(text))
            return false;
        take(part, text.size());
        return true;
    }

    void takeLead(TextView date)
    {
        const Text shown = fmDateToDisplay(date);
        if (shown.empty() || !m_rest.starts_with(shown + L": "))
            return;
        const std::size_t day = std::min(shown.find(L' '), shown.size());
        take(SummaryPart::Day, day);
        take(SummaryPart::Time, shown.size() - day);
        take(SummaryPart::Colon, 2);
    }

    // A field that is shown if it has a value. A field that the summary does not show as expected ends the typesetting:
    // the rest is one value.
    void takeField(TextView caption, std::size_t length, bool isChanged = false)
    {
        if (length == 0 || m_rest.empty())
            return;
        if (m_hasField && !takeText(SummaryPart::Separator, SeparatorText))
            return takeRest();
        m_hasField = true;
        if (!caption.empty() && !takeCaption(caption))
            return takeRest();
        take(SummaryPart::Value, length, isChanged);
    }

    void takeRest() { take(SummaryPart::Value, m_rest.size()); }

    std::vector<SummaryRun> runs() &&
    {
        takeRest();
        return std::move(m_runs);
    }

private:
    bool takeCaption(TextView caption)
    {
        const bool found = m_rest.starts_with(caption) && m_rest.substr(caption.size()).starts_with(L'=');
        if (found) {
            take(SummaryPart::Caption, caption.size());
            take(SummaryPart::Equals, 1);
        }
        return found;
    }

    TextView m_rest;
    std::vector<SummaryRun> m_runs;
    bool m_hasField = false;
};

bool differs(TextView value, TextView earlier) { return !earlier.empty() && value != earlier; }

void takeFields(Typesetter& setter, const ListedRecord& record, const LinePieces& pieces, const LinePieces& earlier)
{
    for (const SummaryField& field : record.type->fields) {
        const TextView value = displayPart(pieces[field.piece]);
        setter.takeField(field.caption, value.size(), differs(value, displayPart(earlier[field.piece])));
    }
}

// " lb", " oz" or " kg", with an "s" after any amount but "1".
std::size_t amountLength(TextView amount) { return amount.size() + 3 + (amount == L"1" ? 0 : 1); }

// Pounds, always; then ounces, and kilograms in parentheses, if they are known. A blank follows each of them.
std::size_t weightLength(const LinePieces& pieces)
{
    const auto known = [](TextView amount, std::size_t around) {
        return amount.empty() ? 0 : amountLength(amount) + around;
    };
    return amountLength(pieces[1]) + 1 + known(pieces[2], 1) + known(pieces[3], TextView(L"() ").size());
}

// The item, and in parentheses its type if that differs.
std::size_t refusedLength(const LinePieces& pieces)
{
    const TextView type = pieces[RefusalTypePiece];
    const TextView item = pieces[RefusalItemPiece];
    if (item.empty())
        return type.size();
    return item == type ? item.size() : item.size() + type.size() + TextView(L" ()").size();
}

}

std::vector<SummaryRun> typeset(const ListedRecord& record, const ListedRecord* earlier)
{
    Typesetter setter(record.summary);
    const LinePieces pieces(record.line);
    const LinePieces earlierPieces(earlier ? earlier->line : TextView());
    setter.takeLead(recordDate(record));
    switch (record.type->number) {
    case RecordTypeNumber::Reproductive:
        setter.takeField({}, pieces[ReproductiveCountsPiece].size());
        break;
    case RecordTypeNumber::BirthMeasurements:
        setter.takeField(L"Birth Weight", weightLength(pieces));
        break;
    case RecordTypeNumber::Refusal:
        setter.takeField({}, refusedLength(pieces));
        setter.takeField(L"Comment", displayPart(pieces[RefusalCommentPiece]).size());
        break;
    default:
        break;
    }
    takeFields(setter, record, pieces, earlierPieces);
    return std::move(setter).runs();
}

std::vector<int> earlierRecords(const std::vector<ListedRecord>& records, RecordTypeNumber type)
{
    const std::vector<DatedRecord> dated = datedRecords(records, type).dated;
    std::vector<int> earlier(records.size(), -1);
    for (std::size_t i = 1; i < dated.size(); ++i) {
        std::size_t before = i;
        while (before > 0 && !isBefore(dated[before - 1].date, dated[i].date))
            --before;
        if (before > 0)
            earlier[static_cast<std::size_t>(dated[i].record)] = dated[before - 1].record;
    }
    return earlier;
}

}
