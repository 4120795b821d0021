#include "control/GridLoader.h"

#include "control/SummaryText.h"
#include "platform/Conversions.h"
#include "platform/Letters.h"
#include "shared/modConst.h"

namespace health {

namespace {

void appendFields(Text& text, const RecordType& type, const LinePieces& pieces)
{
    for (const SummaryField& field : type.fields)
        appendField(text, field.caption, pieces[field.piece]);
}

// "7 lbs", "1 lb": the plural goes by the text alone, and a blank follows in any case.
void appendUnit(Text& text, TextView amount, TextView unit)
{
    text += amount;
    text += unit;
    if (amount != L"1")
        text += L's';
}

// "Birth Weight=7 lbs 2 ozs (3.2 kgs) "; pounds are written even when empty, kilograms have their plural too.
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

// What the patient can have, in the order of the calls. Emergency room records are never asked for. Intended.
std::vector<RecordTypeNumber> GridLoader::types() const
{
    using enum RecordTypeNumber;
    std::vector<RecordTypeNumber> types;
    for (const RecordTypeNumber type :
        { Reproductive, BirthMeasurements, InfantFeeding, FunctionalStatus, Asthma, TreatmentContract, Refusal }) {
        const bool ofWomen = type == Reproductive;
        const bool ofChildren = type == BirthMeasurements || type == InfantFeeding;
        if ((!ofWomen || m_patient.isFemale()) && (!ofChildren || m_patient.isYoungChild()))
            types.push_back(type);
    }
    return types;
}

ExpectedCall GridLoader::callOf(RecordTypeNumber number) const
{
    const bool ofPatient = number == RecordTypeNumber::Reproductive || number == RecordTypeNumber::BirthMeasurements;
    return { ofPatient ? ExpectedCall::Form::Text : ExpectedCall::Form::List,
        Text(recordType(number).callPrefix) + L" GET",
        wholeText(m_patient.number) + (number == RecordTypeNumber::Reproductive ? L"^^1" : L"") };
}

void GridLoader::load()
{
    const auto wanted = types();
    std::vector<ExpectedCall> calls;
    for (const RecordTypeNumber number : wanted)
        calls.push_back(callOf(number));
    const modShared::CallHint hint(m_shared, calls);
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        const RecordType& type = recordType(wanted[i]);
        if (calls[i].form == ExpectedCall::Form::Text)
            loadPatientRow(type, m_shared.CallRpc(calls[i].name, calls[i].parameter));
        else
            loadList(type, m_shared.CallRpcList(calls[i].name, calls[i].parameter));
    }
}

void GridLoader::loadPatientRow(const RecordType& type, const Text& reply)
{
    if (reply.empty() || m_shared.CheckRpcError(reply, L""))
        return;
    const LinePieces pieces(reply);
    if (type.number == RecordTypeNumber::Reproductive) {
        m_text = upperCase(pieces[1]);
    } else {
        m_text.clear();
        appendBirthWeight(m_text, pieces);
    }
    appendFields(m_text, type, pieces);
    addPatientRow(type, m_text);
}

void GridLoader::loadList(const RecordType& type, const Text& reply)
{
    if (m_shared.CheckRpcError(reply, L""))
        return;
    TextView rest = reply;
    for (std::size_t end = rest.find(LineBreak); end != TextView::npos; end = rest.find(LineBreak)) {
        addListRow(type, rest.substr(0, end));
        rest.remove_prefix(end + LineBreak.size());
    }
}

void GridLoader::addListRow(const RecordType& type, TextView line)
{
    const LinePieces pieces(line);
    if (type.number == RecordTypeNumber::Refusal) {
        addRefusalRow(type, pieces);
        return;
    }
    // Fields go behind the date but are separated among themselves only, so the two are built apart.
    m_text.clear();
    appendFields(m_text, type, pieces);
    Text lead;
    appendDateLead(lead, pieces[3]);
    m_text.insert(0, lead);
    addRow(type,
        { .key = recordKey(type, pieces[1]),
            .record = pieces[1],
            .visit = pieceView(pieces[3], L"|", 2),
            .locked = pieces[2],
            .summary = m_text });
}

void GridLoader::addRefusalRow(const RecordType& type, const LinePieces& pieces)
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
    Text lead;
    appendDateLead(lead, pieces[9]);
    m_text.insert(0, lead);
    addRow(type,
        { .key = recordKey(type, pieces[1]),
            .record = pieces[1],
            .visit = {},
            .locked = pieces[10],
            .summary = m_text });
}

void GridLoader::addPatientRow(const RecordType& type, TextView summary)
{
    const Text patient = wholeText(m_patient.number);
    addRow(type, { .key = type.rowKey, .record = patient, .visit = {}, .locked = {}, .summary = summary });
}

TextView GridLoader::recordKey(const RecordType& type, TextView record)
{
    m_key = type.rowKey;
    m_key += record;
    return m_key;
}

void GridLoader::addRow(const RecordType& type, const Row& row)
{
    static constexpr TextView digits = L"0123456789";
    const int index = m_grid.rowCount();
    m_grid.setRowCount(index + 1);
    m_grid.setRowData(index, row.key);
    m_grid.setText(index, GridColumn::Label, type.rowLabel);
    m_grid.setText(index, GridColumn::Summary, row.summary);
    m_grid.setText(index, GridColumn::Record, row.record);
    m_grid.setText(index, GridColumn::Visit, row.visit);
    m_grid.setText(index, GridColumn::Locked, row.locked);
    m_grid.setText(index, GridColumn::Type, digits.substr(static_cast<std::size_t>(type.code()), 1));
}

}
