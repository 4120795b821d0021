#include "host/windows/PatientSearch.h"

#include "host/framework/DisplayText.h"
#include "host/session/Replies.h"

#include <QCoreApplication>

namespace health {

QStringList PatientSearch::headings()
{
    const auto tr = [](const char* text) { return QCoreApplication::translate("PatientSearch", text); };
    return { tr("Name"), tr("Number"), tr("Sex"), tr("Born"), tr("Age") };
}

QList<ListPicker::Row> PatientSearch::rows(const QString& text, const QDate& today) const
{
    QList<ListPicker::Row> rows;
    for (const QStringList& pieces : linesOf(m_session.callList(L"MEVHOST PATIENTS", text.toStdWString()))) {
        const QString birth = pieces.value(3);
        rows.append({ pieces[0],
            { displayName(pieces.value(1)), pieces[0], pieces.value(2), displayDate(birth),
                displayAge(dateOfFileMan(birth).date(), today) } });
    }
    return rows;
}

}
