#include "host/Pickers.h"

#include "host/DisplayText.h"
#include "host/ListPicker.h"

#include <QCoreApplication>

namespace health {

namespace {

QString tr(const char* text) { return QCoreApplication::translate("Pickers", text); }

QList<ListPicker::Row> patientRows(HostSession& session, const QString& text)
{
    QList<ListPicker::Row> rows;
    for (const QStringList& pieces : linesOf(session.callList(L"MEVHOST PATIENTS", text.toStdWString()))) {
        const QString birth = pieces.value(3);
        rows.append({ pieces[0],
            { displayName(pieces.value(1)), pieces[0], pieces.value(2), displayDate(birth),
                displayAge(dateOfFileMan(birth).date(), QDate::currentDate()) } });
    }
    return rows;
}

}

long pickPatient(HostSession& session, QWidget* parent)
{
    ListPicker picker(tr("Select Patient"), { tr("Name"), tr("Number"), tr("Sex"), tr("Born"), tr("Age") }, parent);
    picker.setSearch(tr("Beginning of the name (last, first), or number"),
        [&](const QString& text) { return patientRows(session, text); });
    return picker.pick().toLong();
}

std::optional<VisitData> pickVisit(HostSession& session, long patientNumber, QWidget* parent)
{
    ListPicker picker(tr("Select Visit"), { tr("Date"), tr("Location"), tr("Provider"), tr("Category") }, parent);
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
