#include "host/windows/Previews.h"

#include "host/framework/ClinicalContext.h"
#include "host/framework/DisplayText.h"
#include "host/report/PrintoutPages.h"
#include "host/report/ReportPages.h"
#include "host/windows/PreviewDialog.h"

#include <QApplication>

using namespace Qt::StringLiterals;

namespace health {

namespace {

ReportPeople peopleOf(ClinicalContext& context)
{
    const PatientData& patient = context.patient();
    const QString user = displayName(QString::fromStdWString(context.session().signedOn().userName));
    ReportPeople people { { u"No patient selected"_s }, user };
    if (patient.number != 0) {
        const QString age = displayAge(patient.birth, QDate::currentDate());
        QString details = u"Number %1   %2"_s.arg(QString::number(patient.number), displaySex(patient.sex));
        if (!age.isEmpty())
            details += u"   Age %1"_s.arg(age);
        people.patient = { displayName(patient.name), details };
    }
    return people;
}

void preview(const PrintedDocument& document) { PreviewDialog(document, QApplication::activeWindow()).exec(); }

}

void previewReport(ClinicalContext& context, const Report& report) { preview(ReportPages(report, peopleOf(context))); }

void previewPages(ClinicalContext& context, Printout& printout) { preview(PrintoutPages(printout, peopleOf(context))); }

}
