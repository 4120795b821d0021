#include "records/ContractCourse.h"

#include "editors/frmTxc.h"
#include "text/DateWords.h"

#include <algorithm>

namespace health {

using namespace std::chrono;

namespace {

using Contract = ContractCourse::Contract;
using State = ContractCourse::State;

constexpr PieceNumber ContractTypePiece = 4;
constexpr PieceNumber InitiatedPiece = 5;
constexpr PieceNumber ProviderPiece = 6;

State stateOf(const Contract& contract, Moment now)
{
    if (contract.initiated->start > now)
        return State::NotBegun;
    return contract.end < now ? State::RanOut : State::Running;
}

Text wordsOf(const Contract& contract, Moment now)
{
    switch (contract.state) {
    case State::Running: {
        const auto left = floor<days>(contract.end - now);
        return left == days { 0 } ? Text(L"running, less than a day left")
                                  : L"running, " + counted(left.count(), L"day") + L" left";
    }
    case State::RanOut:
        return L"ran out on " + dateText(contract.end);
    case State::NotBegun:
        return L"begins on " + contract.initiated->dayText();
    default:
        return contract.initiatedText.empty() ? Text(L"date initiated not recorded")
                                              : L"initiated " + contract.initiatedText + L", which is not a full date";
    }
}

Contract contractOf(int record, const LinePieces& pieces, Moment now)
{
    Contract contract;
    contract.record = record;
    contract.type = shownWord(pieces[ContractTypePiece]);
    contract.provider = spacedName(displayPart(pieces[ProviderPiece]));
    contract.initiatedText = displayPart(pieces[InitiatedPiece]);
    const auto initiated = readRecordDate(contract.initiatedText);
    if (initiated)
        contract.initiatedText = initiated->text();
    if (initiated && hasDay(*initiated)) {
        contract.initiated = initiated;
        contract.end = initiated->start + frmTxc::Term;
        contract.state = stateOf(contract, now);
    }
    contract.words = wordsOf(contract, now);
    return contract;
}

}

ContractCourse::ContractCourse(std::span<const ListedRecord> records, Moment now)
{
    for (std::size_t i = 0; i < records.size(); ++i) {
        if (records[i].type->number == RecordTypeNumber::TreatmentContract)
            m_contracts.push_back(contractOf(static_cast<int>(i), LinePieces(records[i].line), now));
    }
    std::ranges::stable_sort(m_contracts, [](const Contract& one, const Contract& other) {
        if (!one.initiated || !other.initiated)
            return one.initiated.has_value() && !other.initiated;
        return one.initiated->start > other.initiated->start;
    });
}

Text ContractCourse::extent() const
{
    const auto running = std::ranges::count(m_contracts, State::Running, &Contract::state);
    return counted(static_cast<long long>(m_contracts.size()), L"contract") + L", "
        + (running == 0 ? Text(L"none running") : std::to_wstring(running) + L" running");
}

Text ContractCourse::name(const Contract& contract)
{
    const Text name = joined({ contract.type, contract.provider }, L" \u00B7 ");
    return name.empty() ? Text(L"Contract") : name;
}

Text ContractCourse::contractText(const Contract& contract)
{
    const Text initiated = contract.initiated ? L"initiated on " + contract.initiatedText + L", " : Text();
    return name(contract) + L": " + initiated + contract.words;
}

CourseTable ContractCourse::table() const
{
    CourseTable table { L"Treatment Contracts, " + extent(), { L"Type", L"Provider", L"Date Initiated", L"State" },
        {} };
    for (const Contract& contract : m_contracts)
        table.rows.push_back({ contract.type, contract.provider, contract.initiatedText, contract.words });
    return table;
}

}
