#include "records/FhirRecords.h"

#include "records/FhirRefusal.h"
#include "text/FileManDates.h"
#include "text/Letters.h"

#include <algorithm>

namespace health {

namespace {

constexpr TextView NoCategory {};
constexpr TextView SocialHistory = L"social-history";
constexpr TextView VitalSigns = L"vital-signs";
constexpr TextView Survey = L"survey";

// The value of a text of at most nine digits; empty for any other.
std::optional<long long> wholeNumber(TextView text)
{
    if (text.empty() || text.size() > 9 || !std::all_of(text.begin(), text.end(), isDigit))
        return std::nullopt;
    return roundToWhole(leadingNumber(text));
}

// The number after a word such as "LC" in "G2P1LC1SA0TA0"; empty unless it is there exactly so.
TextView countAfter(TextView counts, TextView word)
{
    for (std::size_t at = counts.find(word); at != TextView::npos; at = counts.find(word, at + 1)) {
        const std::size_t from = at + word.size();
        std::size_t end = from;
        while (end < counts.size() && isDigit(counts[end]))
            ++end;
        const bool isWholeWord = at == 0 || isDigit(counts[at - 1]);
        if (isWholeWord && end > from)
            return counts.substr(from, end - from);
    }
    return {};
}

}

// Writes the resources of one record.
class FhirRecord : RecordResource {
public:
    FhirRecord(FhirWriter& writer, const ListedRecord& record)
        : RecordResource(writer, record)
    {
    }

    void write();

private:
    Text line(const ItemCode& item, TextView value) const;

    template<typename Body>
    void observation(const ItemCode& item, TextView category, TextView narrative, Body body);
    void writeCategory(TextView category);

    void count(const ItemCode& item, TextView word);
    void wholeValue(const ItemCode& item, TextView category, PieceNumber piece);
    void dateValue(const ItemCode& item, PieceNumber piece);
    void choiceValue(const ItemCode& item, Choices choices, PieceNumber piece);
    void age(const ItemCode& item, PieceNumber piece);

    void reproductive();
    void contraception();
    void delivery();
    void birth();
    void birthWeight();
    void guardian();
    void functionalStatus();
    void asthma();
    void answers();
    void answer(const ItemCode& item, PieceNumber piece);
    void contract();
};

void FhirRecord::write()
{
    switch (m_record.type->number) {
    case RecordTypeNumber::Reproductive:
        return reproductive();
    case RecordTypeNumber::InfantFeeding:
        return choiceValue(items::InfantFeeding, Choices::Feeding, 4);
    case RecordTypeNumber::BirthMeasurements:
        return birth();
    case RecordTypeNumber::FunctionalStatus:
        return functionalStatus();
    case RecordTypeNumber::Asthma:
        return asthma();
    case RecordTypeNumber::TreatmentContract:
        return contract();
    case RecordTypeNumber::Refusal:
        return FhirRefusal(m_writer, m_record).write();
    case RecordTypeNumber::EmergencyRoom: // never listed
        return;
    }
}

// --- Observations ---

Text FhirRecord::line(const ItemCode& item, TextView value) const
{
    return (m_date ? isoText(*m_date) + L": " : L"") + Text(item.display) + L": " + Text(value);
}

template<typename Body>
void FhirRecord::observation(const ItemCode& item, TextView category, TextView narrative, Body body)
{
    m_writer.resource(L"Observation", name(item.code), narrative, [&] {
        m_json.text("status", L"final");
        writeCategory(category);
        m_writer.item("code", item);
        m_writer.patientReference("subject");
        if (!m_record.type->isOnePerPatient() && !m_record.visit.empty() && m_record.visit != L"0")
            m_writer.reference("encounter", L"visits", m_record.visit, L"Visit " + fmDateToDisplay(shown(3)));
        m_writer.dateTime("effectiveDateTime", m_date);
        body();
    });
}

void FhirRecord::writeCategory(TextView category)
{
    if (category == NoCategory)
        return;
    m_json.array("category", [&] {
        m_json.object("", [&] {
            m_json.array("coding",
                [&] { m_writer.coding(L"http://terminology.hl7.org/CodeSystem/observation-category", category); });
        });
    });
}

void FhirRecord::wholeValue(const ItemCode& item, TextView category, PieceNumber piece)
{
    const TextView stored = shown(piece);
    if (fhirText(stored).empty())
        return;
    observation(item, category, line(item, stored), [&] {
        if (const auto value = wholeNumber(stored))
            m_json.whole("valueInteger", *value);
        else
            m_writer.string("valueString", stored);
    });
}

void FhirRecord::dateValue(const ItemCode& item, PieceNumber piece)
{
    const TextView stored = shown(piece);
    if (fhirText(stored).empty())
        return;
    observation(item, NoCategory, line(item, stored), [&] {
        if (const auto date = storedDate(stored))
            m_writer.dateTime("valueDateTime", date);
        else
            m_writer.string("valueString", stored);
    });
}

void FhirRecord::choiceValue(const ItemCode& item, Choices choices, PieceNumber piece)
{
    const TextView stored = shown(piece);
    if (!fhirText(stored).empty())
        observation(
            item, NoCategory, line(item, stored), [&] { m_writer.choice("valueCodeableConcept", choices, stored); });
}

// --- Reproductive history ---

void FhirRecord::reproductive()
{
    count(items::Gravida, L"G");
    count(items::Para, L"P");
    count(items::LivingChildren, L"LC");
    count(items::SpontaneousAbortions, L"SA");
    count(items::InducedAbortions, L"TA");
    dateValue(items::LastPeriod, 2);
    contraception();
    delivery();
}

void FhirRecord::count(const ItemCode& item, TextView word)
{
    const Text counts = upperCase(shown(1));
    const TextView stored = countAfter(counts, word);
    if (const auto value = wholeNumber(stored))
        observation(item, NoCategory, line(item, stored), [&] { m_json.whole("valueInteger", *value); });
}

void FhirRecord::contraception()
{
    const TextView method = shown(3);
    const auto began = storedDate(shown(4));
    if (fhirText(method).empty() && !began)
        return;
    const Text text = Text(method) + (began ? L" since " + isoText(*began) : L"");
    observation(items::Contraception, NoCategory, line(items::Contraception, text), [&] {
        if (!fhirText(method).empty())
            m_writer.choice("valueCodeableConcept", Choices::Contraception, method);
        if (!began)
            return;
        m_json.array("component", [&] {
            m_json.object("", [&] {
                m_writer.item("code", items::ContraceptionBegan);
                m_writer.dateTime("valueDateTime", began);
            });
        });
    });
}

// An estimated delivery in the past does not mean that the patient is pregnant now, nor do missing data mean that she
// is not.
void FhirRecord::delivery()
{
    const TextView stored = shown(6);
    const TextView method = shown(5);
    const auto date = storedDate(stored);
    const Text text = date ? isoText(*date) : fhirText(stored);
    if (date && date->isExact() && momentOf(date->year, date->month, date->day) >= dateOf(m_writer.subject().now)) {
        observation(items::PregnancyStatus, SocialHistory, line(items::PregnancyStatus, L"Pregnant"),
            [&] { m_writer.choice("valueCodeableConcept", Choices::Pregnancy, L"Pregnant"); });
    }
    if (text.empty() && fhirText(method).empty())
        return;
    const Text narrative = (text.empty() ? L"unknown" : text) + (method.empty() ? L"" : L", by " + Text(method));
    observation(items::EstimatedDelivery, NoCategory, line(items::EstimatedDelivery, narrative), [&] {
        if (date)
            m_writer.dateTime("valueDateTime", date);
        else if (!text.empty())
            m_writer.string("valueString", text);
        else
            m_json.object("dataAbsentReason", [&] {
                m_json.array("coding",
                    [&] { m_writer.coding(L"http://terminology.hl7.org/CodeSystem/data-absent-reason", L"unknown"); });
            });
        m_writer.words("method", method);
    });
}

// --- Birth measurements ---

void FhirRecord::birth()
{
    birthWeight();
    wholeValue(items::BirthOrder, NoCategory, 10);
    age(items::FormulaStarted, 11);
    age(items::BreastStopped, 12);
    age(items::SolidsStarted, 13);
    guardian();
}

void FhirRecord::birthWeight()
{
    struct Unit {
        PieceNumber piece;
        TextView code;
    };
    constexpr Unit units[] = { { 4, L"g" }, { 3, L"kg" } };
    for (const Unit& unit : units) {
        const Text number = plainDecimal(shown(unit.piece));
        if (number.empty())
            continue;
        observation(items::BirthWeight, VitalSigns, line(items::BirthWeight, number + L' ' + Text(unit.code)), [&] {
            m_json.object("valueQuantity", [&] {
                m_json.number("value", number);
                m_json.text("unit", unit.code);
                m_json.text("system", UnitsOfMeasure);
                m_json.text("code", unit.code);
            });
        });
        return;
    }
}

void FhirRecord::age(const ItemCode& item, PieceNumber piece)
{
    const Text stored = fhirText(shown(piece));
    if (stored.empty())
        return;
    const AgeUnitCode* const unit = ageUnitCode(stored.back());
    const Text number = unit ? plainDecimal(TextView(stored).substr(0, stored.size() - 1)) : Text();
    observation(item, NoCategory, line(item, stored), [&] {
        if (number.empty())
            return m_writer.string("valueString", stored);
        m_json.object("valueQuantity", [&] {
            m_json.number("value", number);
            m_json.text("unit", unit->word);
            m_json.text("system", UnitsOfMeasure);
            m_json.text("code", unit->code);
        });
    });
}

void FhirRecord::guardian()
{
    const Text named = fhirText(shown(14));
    if (!m_writer.choices().namesGuardian || named.empty())
        return;
    m_writer.resource(L"RelatedPerson", name(L"guardian"), L"Mother or guardian: " + named, [&] {
        m_writer.patientReference("patient");
        m_json.array("relationship", [&] { m_writer.words("", L"Mother or guardian"); });
        m_json.array("name", [&] { m_json.object("", [&] { m_writer.string("text", named); }); });
    });
}

// --- Functional status and asthma ---

void FhirRecord::functionalStatus()
{
    constexpr PieceNumber first = 4;
    constexpr int levels = 12;
    constexpr Choices afterLevels[] = { Choices::Trend, Choices::YesNo };
    const bool empty = std::all_of(std::begin(items::Functions), std::end(items::Functions), [&](const ItemCode& item) {
        return fhirText(shown(first + static_cast<PieceNumber>(&item - items::Functions))).empty();
    });
    if (empty)
        return;
    observation(items::FunctionalStatus, Survey, wholeRow(), [&] {
        m_json.array("component", [&] {
            for (int i = 0; i < static_cast<int>(std::size(items::Functions)); ++i) {
                const TextView stored = shown(first + i);
                if (fhirText(stored).empty())
                    continue;
                m_json.object("", [&] {
                    m_writer.item("code", items::Functions[i]);
                    m_writer.choice(
                        "valueCodeableConcept", i < levels ? Choices::Level : afterLevels[i - levels], stored);
                });
            }
        });
    });
}

void FhirRecord::asthma()
{
    choiceValue(items::AsthmaSeverity, Choices::Severity, 4);
    wholeValue(items::Fev1, NoCategory, 5);
    wholeValue(items::Fef, NoCategory, 6);
    wholeValue(items::Pef, NoCategory, 7);
    answers();
}

void FhirRecord::answers()
{
    Text text;
    for (PieceNumber piece = 8; piece <= 11; ++piece)
        text += fhirText(shown(piece));
    if (text.empty())
        return;
    observation(items::AsthmaAnswers, NoCategory, wholeRow(), [&] {
        m_json.array("component", [&] {
            answer(items::TobaccoSmoke, 8);
            answer(items::Particulates, 9);
            answer(items::DustMites, 10);
            answer(items::ManagementPlan, 11);
        });
    });
}

void FhirRecord::answer(const ItemCode& item, PieceNumber piece)
{
    const Text stored = fhirText(shown(piece));
    if (stored.empty())
        return;
    m_json.object("", [&] {
        m_writer.item("code", item);
        if (const ValueCode* const value = valueCode(Choices::YesNo, stored))
            m_json.boolean("valueBoolean", value->code == L"yes");
        else
            m_writer.string("valueString", stored);
    });
}

// --- Contracts ---

// Without a status and a signer: neither is stored.
void FhirRecord::contract()
{
    m_writer.resource(L"Contract", name(), wholeRow(), [&] {
        m_writer.dateTime("issued", storedDate(shown(5)));
        m_json.array("subject", [&] { m_writer.patientReference(""); });
        m_writer.reference("author", L"providers", codePart(m_pieces[6]), shown(6));
        m_writer.choice("type", Choices::Contract, shown(4));
    });
}

void writeFhirRecord(FhirWriter& writer, const ListedRecord& record) { FhirRecord(writer, record).write(); }

}
