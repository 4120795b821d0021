#include "records/RecordFields.h"

#include "control/SummaryText.h"
#include "records/CourseDates.h"
#include "text/FileManDates.h"
#include "text/Letters.h"

#include <array>
#include <optional>

namespace health {

namespace {

enum class Reading {
    Proper,
    Kept,
    Date,
};

struct FieldPlace {
    TextView caption;
    PieceNumber piece;
    Reading reading = Reading::Proper;
};

constexpr std::array<FieldPlace, 5> ReproductivePlaces { {
    { L"LMP", 2 },
    { L"Date FP Began", 4 },
    { L"Family Planning Method", 3 },
    { L"Est. Delivery", 6 },
    { L"Determined By", 5 },
} };

constexpr std::array<FieldPlace, 1> FeedingPlaces { { { L"Infant Feeding Choice", 4 } } };

constexpr std::array<FieldPlace, 5> BirthPlaces { {
    { L"Birth Order", 10 },
    { L"Formula Started", 11 },
    { L"Breast Feeding Stopped", 12 },
    { L"Solids Started", 13 },
    { L"Mother or Guardian", 14 },
} };

constexpr std::array<FieldPlace, 14> FunctionalPlaces { {
    { L"Change in Status", 16 },
    { L"Patient is Caregiver to Others", 17 },
    { L"Toileting", 4 },
    { L"Bathing", 5 },
    { L"Dressing", 6 },
    { L"Transfers", 7 },
    { L"Feeding", 8 },
    { L"Continence", 9 },
    { L"Finances", 10 },
    { L"Cooking", 11 },
    { L"Shopping", 12 },
    { L"Housework", 13 },
    { L"Medications", 14 },
    { L"Transportation", 15 },
} };

constexpr std::array<FieldPlace, 8> AsthmaPlaces { {
    { L"Severity", 4 },
    { L"FEV 1", 5 },
    { L"FEF 25-75", 6 },
    { L"PEF/Best PF", 7 },
    { L"Env. Tobacco Smoke", 8 },
    { L"Particulate Matter", 9 },
    { L"Dust Mite", 10 },
    { L"Asthma Management Plan", 11 },
} };

constexpr std::array<FieldPlace, 3> ContractPlaces { {
    { L"Type", 4 },
    { L"Date Initiated", 5 },
    { L"Provider", 6 },
} };

constexpr std::array<FieldPlace, 4> RefusalPlaces { {
    { L"Refusal Type", 4 },
    { L"Refusal Item", 6, Reading::Kept },
    { L"Date Refused", 9, Reading::Date },
    { L"Comment", 12, Reading::Kept },
} };

// The numbers are those of the server's replies.
constexpr std::array<FieldPlace, 12> EmergencyPlaces { {
    { L"Urgency", 4 },
    { L"Means of Arrival", 5 },
    { L"Other Means", 6 },
    { L"Entered By", 7 },
    { L"Informant", 8 },
    { L"Notified", 9 },
    { L"Disposition of Care", 10 },
    { L"Other Disposition", 11 },
    { L"Departure Date/Time", 12, Reading::Date },
    { L"Departure against Advice", 13, Reading::Date },
    { L"Condition on Departure", 14 },
    { L"Transferred To", 15 },
} };

std::span<const FieldPlace> placesOf(RecordTypeNumber type)
{
    using enum RecordTypeNumber;
    switch (type) {
    case Reproductive:
        return ReproductivePlaces;
    case InfantFeeding:
        return FeedingPlaces;
    case BirthMeasurements:
        return BirthPlaces;
    case FunctionalStatus:
        return FunctionalPlaces;
    case Asthma:
        return AsthmaPlaces;
    case TreatmentContract:
        return ContractPlaces;
    case Refusal:
        return RefusalPlaces;
    case EmergencyRoom:
        return EmergencyPlaces;
    }
    return {};
}

Text shownValue(TextView piece, Reading reading)
{
    const TextView value = displayPart(piece);
    if (reading == Reading::Proper)
        return properCase(value, WordStart::AfterBlankOrComma);
    const Text date = reading == Reading::Date ? fmDateToDisplay(value) : Text();
    return date.empty() ? Text(value) : date;
}

// "G3P1LC1SA1TA0" as its counts, or as a whole if it has another form.
void addCounts(std::vector<RecordField>& fields, TextView counts)
{
    constexpr std::array<TextView, 5> codes { L"G", L"P", L"LC", L"SA", L"TA" };
    std::vector<RecordField> single;
    TextView rest = counts;
    for (const TextView code : codes) {
        if (!rest.starts_with(code))
            continue;
        rest.remove_prefix(code.size());
        std::size_t length = 0;
        while (length < rest.size() && isDigit(rest[length]))
            ++length;
        if (length > 0)
            single.push_back({ Text(code), Text(rest.substr(0, length)), {} });
        rest.remove_prefix(length);
    }
    if (!rest.empty())
        fields.push_back({ L"Reproductive History", Text(counts), {} });
    else
        fields.insert(fields.end(), single.begin(), single.end());
}

// The weight as the summary shows it, and the grams, which it does not show.
Text birthWeight(const ListedRecord& record, const LinePieces& pieces)
{
    constexpr TextView caption = L"Birth Weight=";
    Text weight;
    if (!pieces[1].empty() || !pieces[2].empty() || !pieces[3].empty()) {
        weight = record.summary.substr(0, record.summary.find(L';'));
        weight.erase(0, weight.starts_with(caption) ? caption.size() : 0);
        weight.erase(weight.find_last_not_of(L' ') + 1);
    }
    if (!pieces[4].empty())
        weight += (weight.empty() ? L"" : L", ") + Text(pieces[4]) + L" grams";
    return weight;
}

}

std::vector<RecordField> recordFields(const ListedRecord& record, const ListedRecord* before)
{
    std::vector<RecordField> fields;
    const LinePieces pieces(record.line);
    if (record.type->number == RecordTypeNumber::Reproductive) {
        addCounts(fields, upperCase(pieces[1]));
    } else if (record.type->number == RecordTypeNumber::BirthMeasurements) {
        if (Text weight = birthWeight(record, pieces); !weight.empty())
            fields.push_back({ L"Birth Weight", std::move(weight), {} });
    }
    const std::optional<LinePieces> former = before ? std::optional<LinePieces>(before->line) : std::nullopt;
    for (const FieldPlace& place : placesOf(record.type->number)) {
        Text value = shownValue(pieces[place.piece], place.reading);
        Text formerValue = former ? shownValue((*former)[place.piece], place.reading) : Text();
        if (formerValue == value)
            formerValue.clear();
        if (!value.empty() || !formerValue.empty())
            fields.push_back({ Text(place.caption), std::move(value), std::move(formerValue) });
    }
    return fields;
}

const ListedRecord* recordBefore(std::span<const ListedRecord> records, std::size_t index)
{
    const ListedRecord& record = records[index];
    const auto date = readRecordDate(recordDate(record));
    if (!date || record.type->number == RecordTypeNumber::Refusal)
        return nullptr;
    const ListedRecord* before = nullptr;
    std::optional<RecordDate> latest;
    for (const ListedRecord& other : records) {
        const auto otherDate = other.type == record.type ? readRecordDate(recordDate(other)) : std::nullopt;
        if (!otherDate || !isBefore(*otherDate, *date) || (latest && otherDate->start <= latest->start))
            continue;
        before = &other;
        latest = otherDate;
    }
    return before;
}

Text shownDate(const ListedRecord& record) { return fmDateToDisplay(recordDate(record)); }

}
