#include "control/GridLoader.h"

#include "control/GridColumns.h"
#include "control/SummaryText.h"
#include "text/Conversions.h"
#include "text/Letters.h"

#include <array>

namespace health {

namespace {

void appendFields(Text& text, const RecordType& type, const LinePieces& pieces)
{
    for (const SummaryField& field : type.fields)
        appendField(text, field.caption, pieces[field.piece]);
}

// "7 lbs", "1 lb". Intended: every text but "1" is plural, even an empty one.
void appendUnit(Text& text, TextView amount, TextView unit)
{
    text += amount;
    text += unit;
    if (amount != L"1")
        text += L's';
}

// "Birth Weight=7 lbs 2 ozs (3.2 kgs) "; pounds appear even if empty, and the kilograms' unit has a plural.
void appendBirthWeight(Text& text, const LinePieces& pieces)
{
    text += L"Birth Weight=";
    appendUnit(text, pieces[1], L" lb");
    text += L' ';
    if (!pieces[2].empty()) {
        appendUnit(text, pieces[2], L" oz");
        text += L' ';
    }
    if (!pieces[3].empty()) {
        text += L'(';
        appendUnit(text, pieces[3], L" kg");
        text += L") ";
    }
}

}

// The types that the patient can have, in the order of the calls.
std::vector<const RecordType*> GridLoader::types() const
{
    using enum RecordTypeNumber;
    std::vector<const RecordType*> types;
    for (const RecordTypeNumber number : { Reproductive, BirthMeasurements, InfantFeeding, FunctionalStatus, Asthma,
             EmergencyRoom, TreatmentContract, Refusal }) {
        if (const RecordType& type = recordType(number); type.isListed(m_patient))
            types.push_back(&type);
    }
    return types;
}

ExpectedCall GridLoader::callOf(const RecordType& type) const
{
    return { type.isOnePerPatient() ? ExpectedCall::Form::OneText : ExpectedCall::Form::Lines,
        Text(type.callPrefix) + L" GET",
        wholeText(m_patient.number) + (type.number == RecordTypeNumber::Reproductive ? L"^^1" : L""),
        ExpectedCall::Purpose::List };
}

void GridLoader::load()
{
    const auto wanted = types();
    std::vector<ExpectedCall> calls;
    calls.reserve(wanted.size());
    for (const RecordType* const type : wanted)
        calls.push_back(callOf(*type));
    const modShared::CallHint hint(m_shared, calls);
    for (std::size_t i = 0; i < wanted.size() && !m_serverGone; ++i) {
        const bool one = wanted[i]->isOnePerPatient();
        const TextView reply = m_lines.keep(one ? m_shared.CallRpc(calls[i].name, calls[i].parameter)
                                                : m_shared.CallRpcList(calls[i].name, calls[i].parameter));
        if (!isRead(*wanted[i], reply))
            continue;
        if (one)
            loadPatientRow(*wanted[i], reply);
        else
            forEachLine(reply, [&](TextView line) { addListRow(*wanted[i], line); });
    }
    if (m_serverGone) {
        m_grid.setRowCount(0);
        m_lines.clear();
    }
}

bool GridLoader::isRead(const RecordType& type, TextView reply)
{
    const CallResult result = m_shared.lastCall();
    m_serverGone = result == CallResult::ServerGone;
    if (result == CallResult::Answered && !m_shared.CheckRpcError(reply, L""))
        return true;
    m_unread.push_back(&type);
    return false;
}

Text GridLoader::remark() const
{
    if (m_serverGone)
        return L"The server cannot be reached. The records were not read.";
    Text names;
    for (const RecordType* const type : m_unread)
        names += (names.empty() ? L"" : L", ") + Text(type->rowLabel);
    if (!names.empty())
        return L"Could not be read: " + names + L".";
    return m_grid.rowCount() == 0 ? Text(NoRecords) : Text();
}

void GridLoader::loadPatientRow(const RecordType& type, TextView reply)
{
    if (reply.empty())
        return;
    const LinePieces pieces(reply);
    if (type.number == RecordTypeNumber::Reproductive) {
        m_text = upperCase(pieces[1]);
    } else {
        m_text.clear();
        appendBirthWeight(m_text, pieces);
    }
    appendFields(m_text, type, pieces);
    addRow(type, { .record = wholeText(m_patient.number), .visit = {}, .locked = {}, .date = {}, .line = reply });
}

void GridLoader::addListRow(const RecordType& type, TextView line)
{
    const LinePieces pieces(line);
    if (type.number == RecordTypeNumber::Refusal) {
        addRefusalRow(type, pieces, line);
        return;
    }
    m_text.clear();
    appendFields(m_text, type, pieces);
    addRow(type,
        { .record = pieces[1], .visit = codePart(pieces[3]), .locked = pieces[2], .date = pieces[3], .line = line });
}

void GridLoader::addRefusalRow(const RecordType& type, const LinePieces& pieces, TextView line)
{
    const TextView refusalType = pieces[4];
    const TextView item = pieces[6];
    m_text = item.empty() ? refusalType : item;
    if (!item.empty() && item != refusalType) {
        m_text += L" (";
        appendProperCase(m_text, refusalType, WordStart::AfterBlank);
        m_text += L')';
    }
    appendField(m_text, L"Comment", pieces[12], FieldCase::Kept);
    addRow(type, { .record = pieces[1], .visit = {}, .locked = pieces[10], .date = pieces[9], .line = line });
}

// Prepends the date last, because appendField puts "; " before every field but the first.
void GridLoader::addRow(const RecordType& type, const Row& row)
{
    m_lead.clear();
    appendDateLead(m_lead, row.date);
    m_text.insert(0, m_lead);
    m_key = type.rowKey;
    if (!type.isOnePerPatient())
        m_key += row.record;
    std::array<TextView, GridColumn::Count> texts;
    texts[GridColumn::Label] = type.rowLabel;
    texts[GridColumn::Summary] = m_text;
    texts[GridColumn::Record] = row.record;
    texts[GridColumn::Visit] = row.visit;
    texts[GridColumn::Locked] = row.locked;
    const Text typeCode = wholeText(type.code());
    texts[GridColumn::Type] = typeCode;
    m_grid.appendRow(m_key, texts);
    m_lines.add(row.line);
}

}
