#include "host/windows/PatientSearch.h"

#include "host/framework/DisplayText.h"
#include "host/session/Replies.h"

using namespace Qt::StringLiterals;

namespace health {

QStringList PatientSearch::headings() { return { u"Name"_s, u"Number"_s, u"Sex"_s, u"Born"_s, u"Age"_s }; }

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
