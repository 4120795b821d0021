#pragma once

#include "api/Component.h"
#include "records/FhirWriter.h"

#include <QDialog>

class QCheckBox;

namespace health {

// Says what is exported, and asks what to include; the caller then asks for the file.
class ExportDialog : public QDialog {
public:
    // `extent`: which records, as in "3 of 12 records, filtered by ..."; `remark`: why the list is incomplete, if it
    // is.
    ExportDialog(ExportFormat format, const QString& extent, const QString& remark, QWidget* parent);

    FhirChoices choices() const;

private:
    QCheckBox* addChoice(const QString& caption, const QString& tip);

    QCheckBox* m_guardian = nullptr;
    QCheckBox* m_snomed = nullptr;
};

}
