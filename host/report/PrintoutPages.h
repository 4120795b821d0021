#pragma once

#include "api/Printout.h"
#include "host/report/PrintedDocument.h"

namespace health {

// A panel's printout on pages: its drawing below the title, the patient and the printout's remarks.
class PrintoutPages : public PrintedDocument {
public:
    // The printout must outlive the object.
    PrintoutPages(Printout& printout, ReportPeople people);

    QString title() const override;
    QString spokenText() const override;
    int paint(QPrinter& printer) const override;

private:
    Printout& m_printout;
    ReportPeople m_people;
};

}
