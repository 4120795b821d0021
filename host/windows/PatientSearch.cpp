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
        rows.append(
            row({ pieces[0].toLong(), pieces.value(1), pieces.value(2), birth, dateOfFileMan(birth).date() }, today));
    }
    return rows;
}

ListPicker::Row PatientSearch::row(const PatientData& patient, const QDate& today)
{
    const QString number = QString::number(patient.number);
    return { number,
        { displayName(patient.name), number, patient.sex, displayDate(patient.birthDate),
            displayAge(patient.birth, today) } };
}

}
