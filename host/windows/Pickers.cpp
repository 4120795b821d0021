#include "host/windows/Pickers.h"

#include "host/framework/DisplayText.h"
#include "host/session/Replies.h"
#include "host/windows/PatientSearch.h"

using namespace Qt::StringLiterals;

namespace health {

namespace {

// The patients seen before, and a heading for those that follow; no rows without such a patient.
QList<ListPicker::Row> seenRows(const QList<PatientData>& seen, const QDate& today)
{
    if (seen.isEmpty())
        return {};
    QList<ListPicker::Row> rows { RowList::heading(u"Seen in this session"_s) };
    for (const PatientData& patient : seen)
        rows.append(PatientSearch::row(patient, today));
    rows.append(RowList::heading(u"All patients by name"_s));
    return rows;
}

}

long pickPatient(HostSession& session, const QList<PatientData>& seen, QWidget* parent)
{
    const PatientSearch patients(session);
    ListPicker picker(u"Select Patient"_s, PatientSearch::headings(), parent);
    picker.list().setColumn(0, 36);
    picker.list().setColumn(1, 11, Qt::AlignRight);
    picker.list().setColumn(2, 6, Qt::AlignHCenter);
    picker.list().setColumn(3, 14);
    picker.list().setColumn(4, 12, Qt::AlignRight);
    picker.setSearch(u"Name (last, first), given name, birth date or number"_s,
        [&](const QString& text) -> std::optional<QList<ListPicker::Row>> {
            if (session.isInCall())
                return std::nullopt;
            QList<ListPicker::Row> rows = patients.rows(text, QDate::currentDate());
            return text.isEmpty() ? seenRows(seen, QDate::currentDate()) + rows : rows;
        });
    return picker.pick().toLong();
}

std::optional<VisitData> pickVisit(HostSession& session, long patientNumber, long currentVisit, QWidget* parent)
{
    ListPicker picker(u"Select Visit"_s, { u"Date"_s, u"Location"_s, u"Provider"_s, u"Category"_s }, parent);
    picker.list().setColumn(0, 18);
    picker.list().setColumn(1, 26);
    picker.list().setColumn(2, 26);
    picker.list().setColumn(3, 12);
    QList<ListPicker::Row> rows { { u"0"_s, { u"No visit"_s } } };
    std::map<QString, VisitData> visits { { u"0"_s, VisitData() } };
    const auto lines = linesOf(session.callList(L"MEVHOST VISITS", std::to_wstring(patientNumber)));
    for (const QStringList& pieces : lines) {
        visits[pieces[0]] = { pieces[0].toLong(), pieces.value(1), displayName(pieces.value(2)) };
        rows.append({ pieces[0],
            { displayDate(pieces.value(1)), displayName(pieces.value(2)), displayName(pieces.value(3)),
                displayName(pieces.value(4)) } });
    }
    picker.list().setRows(rows);
    // The server lists the latest visit first.
    picker.list().selectKey(currentVisit == 0 ? lines.value(0).value(0) : QString::number(currentVisit));
    const auto found = visits.find(picker.pick());
    return found == visits.end() ? std::nullopt : std::optional(found->second);
}

Text pickUser(HostSession& session, QWidget* parent)
{
    ListPicker picker(u"Sign On"_s, { u"User"_s, u"Description"_s }, parent);
    QList<ListPicker::Row> rows;
    for (const QStringList& pieces : linesOf(session.users()))
        rows.append({ pieces.value(1), { displayName(pieces.value(1)), pieces.value(2) } });
    picker.list().setRows(rows);
    return picker.pick().toStdWString();
}

}
