#include "host/windows/Pickers.h"

#include "host/framework/DisplayText.h"
#include "host/session/Replies.h"
#include "host/windows/PatientSearch.h"

#include <QCoreApplication>

namespace health {

namespace {

QString tr(const char* text) { return QCoreApplication::translate("Pickers", text); }

}

long pickPatient(HostSession& session, QWidget* parent)
{
    const PatientSearch patients(session);
    ListPicker picker(tr("Select Patient"), PatientSearch::headings(), parent);
    picker.setColumn(0, 36);
    picker.setColumn(1, 11, Qt::AlignRight);
    picker.setColumn(2, 6, Qt::AlignHCenter);
    picker.setColumn(3, 14);
    picker.setColumn(4, 12, Qt::AlignRight);
    picker.setSearch(tr("Name (last, first), given name, birth date or number"),
        [&](const QString& text) -> std::optional<QList<ListPicker::Row>> {
            if (session.isInCall())
                return std::nullopt;
            return patients.rows(text, QDate::currentDate());
        });
    return picker.pick().toLong();
}

std::optional<VisitData> pickVisit(HostSession& session, long patientNumber, long currentVisit, QWidget* parent)
{
    ListPicker picker(tr("Select Visit"), { tr("Date"), tr("Location"), tr("Provider"), tr("Category") }, parent);
    picker.setColumn(0, 18);
    picker.setColumn(1, 28);
    picker.setColumn(3, 14);
    QList<ListPicker::Row> rows { { QStringLiteral("0"), { tr("No visit") } } };
    std::map<QString, VisitData> visits { { QStringLiteral("0"), VisitData() } };
    const auto lines = linesOf(session.callList(L"MEVHOST VISITS", std::to_wstring(patientNumber)));
    for (const QStringList& pieces : lines) {
        visits[pieces[0]] = { pieces[0].toLong(), pieces.value(1), displayName(pieces.value(2)) };
        rows.append({ pieces[0],
            { displayDate(pieces.value(1)), displayName(pieces.value(2)), displayName(pieces.value(3)),
                displayName(pieces.value(4)) } });
    }
    picker.setRows(rows);
    // The latest comes first.
    picker.selectKey(currentVisit == 0 ? lines.value(0).value(0) : QString::number(currentVisit));
    const auto found = visits.find(picker.pick());
    return found == visits.end() ? std::nullopt : std::optional(found->second);
}

Text pickUser(HostSession& session, QWidget* parent)
{
    ListPicker picker(tr("Sign On"), { tr("User"), tr("Description") }, parent);
    QList<ListPicker::Row> rows;
    for (const QStringList& pieces : linesOf(session.users()))
        rows.append({ pieces.value(1), { displayName(pieces.value(1)), pieces.value(2) } });
    picker.setRows(rows);
    return picker.pick().toStdWString();
}

}
