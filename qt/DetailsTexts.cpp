#include "qt/DetailsTexts.h"

#include "control/kalmevRepHistCtrl.h"
#include "records/RecordDate.h"
#include "text/Conversions.h"
#include "toolkit/QtText.h"

namespace health {

using namespace Qt::StringLiterals;

Text currentPatient(kalmevRepHistCtrl& control)
{
    try {
        return control.services().patientText();
    } catch (...) {
        return {}; // the control has reported it
    }
}

// The host's text is "11/21/2026 08:15, Pediatric Clinic".
Text placeOfVisit(const modShared& services)
{
    try {
        const Text visit = services.encounter().displayText();
        const std::size_t comma = visit.find(L", ");
        return comma == Text::npos ? Text() : visit.substr(comma + 2);
    } catch (...) {
        return {};
    }
}

// "8 records since 02/10/2025"; empty for a kind with one record per patient.
static QString countOf(std::span<const ListedRecord> records, const RecordType& type)
{
    if (type.isOnePerPatient())
        return {};
    int count = 0;
    std::optional<RecordDate> earliest;
    for (const ListedRecord& record : records) {
        if (record.type != &type)
            continue;
        ++count;
        const auto date = readRecordDate(recordDate(record));
        if (date && (!earliest || date->start < earliest->start))
            earliest = date;
    }
    if (count == 1)
        return u"1 record"_s;
    const QString text = u"%1 records"_s.arg(count);
    return earliest ? text + u" since "_s + toQString(earliest->dayText()) : text;
}

HeadingTexts headingOf(std::span<const ListedRecord> records, std::size_t index, TextView place)
{
    const ListedRecord& record = records[index];
    HeadingTexts heading;
    heading.kind = toQString(record.label);
    heading.date = toQString(shownDate(record));
    heading.isOfCurrentVisit = record.isOfCurrentVisit;
    const auto remark = [&](const QString& text) {
        if (!text.isEmpty())
            heading.remarks.append(text);
    };
    if (record.isOfCurrentVisit)
        remark(toQString(place));
    remark(countOf(records, *record.type));
    if (record.isLocked)
        remark(u"Locked, cannot be changed"_s);
    return heading;
}

QStringList takeFacts(std::vector<RecordField>& fields)
{
    QStringList facts;
    for (const RecordField& field : fields) {
        if (field.caption == L"Change in Status" || field.caption == L"Patient is Caregiver to Others")
            facts << toQString(field.caption) << toQString(field.value);
    }
    fields.clear();
    return facts;
}

}
