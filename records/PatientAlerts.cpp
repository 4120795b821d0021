#include "records/PatientAlerts.h"

#include "records/AsthmaCourse.h"
#include "text/Letters.h"

namespace health {

namespace {

constexpr PieceNumber ExpectedDeliveryPiece = 6;
constexpr PieceNumber StatusChangePiece = 16;

TextView value(const ListedRecord& record, PieceNumber piece)
{
    return displayPart(pieceView(record.line, L"^", piece));
}

// Compared by day: on the estimated day itself it has not passed.
void addPregnancy(std::vector<PatientAlert>& alerts, const ListedRecord& record, Moment now)
{
    const auto delivery = parseDate(value(record, ExpectedDeliveryPiece));
    if (!delivery)
        return;
    const Text date = dateText(*delivery);
    if (dateOf(*delivery) < dateOf(now))
        alerts.push_back({ PatientAlert::Kind::Due, L"Estimated delivery " + date + L" has passed" });
    else
        alerts.push_back({ PatientAlert::Kind::Caution, L"Pregnant, due " + date });
}

void addAsthmaVisit(std::vector<PatientAlert>& alerts, TextView registryDue, Moment now)
{
    const auto due = dueDistance(registryDue, now);
    if (due)
        alerts.push_back(
            { PatientAlert::Kind::Due, (due->isOver ? L"Asthma visit was due " : L"Asthma visit due ") + due->date });
}

// FileMan dates sort as texts. Of two assessments of the same time, the first in the list counts.
const ListedRecord* latestAssessment(const std::vector<ListedRecord>& records)
{
    const ListedRecord* latest = nullptr;
    for (const ListedRecord& record : records) {
        if (record.type->number == RecordTypeNumber::FunctionalStatus
            && (!latest || recordDate(record) > recordDate(*latest)))
            latest = &record;
    }
    return latest;
}

}

std::vector<PatientAlert> patientAlerts(const std::vector<ListedRecord>& records, Moment now, TextView registryDue)
{
    std::vector<PatientAlert> alerts;
    for (const ListedRecord& record : records) {
        if (record.type->number == RecordTypeNumber::Reproductive)
            addPregnancy(alerts, record, now);
    }
    const ListedRecord* const assessment = latestAssessment(records);
    if (assessment && equalIgnoringCase(value(*assessment, StatusChangePiece), L"Decline"))
        alerts.push_back({ PatientAlert::Kind::Caution, L"Functional status: decline" });
    addAsthmaVisit(alerts, registryDue, now);
    return alerts;
}

}
