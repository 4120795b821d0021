#pragma once

#include "api/Component.h"

#include <QObject>

class QAction;
class QWidget;

namespace health {

class ListExport;
class ShownRecords;
struct FhirChoices;

// The panel's commands that copy and export the records that are shown, in the shown order.
class TakeAlong : public QObject {
public:
    // Publishes the commands as actions of the panel. Both must outlive the object.
    TakeAlong(QWidget& panel, ShownRecords& records);

    // The commands for the row's menu.
    const std::vector<QAction*>& copyActions() const { return m_copies; }

    // ComponentInstance::exportRecords. Throws Failure too if some kinds of record could not be read.
    std::vector<ExportedFile> files(ExportFormat format) const;

private:
    QAction* add(const QString& caption, const char* menu, void (TakeAlong::*work)());
    void enable();
    ListExport listExport() const;
    QString extent(const ListExport& exported) const;

    void copySelected();
    void copyShown();
    void exportFhir() { exportAs(ExportFormat::Fhir); }
    void exportCsv() { exportAs(ExportFormat::Csv); }
    void exportAs(ExportFormat format);
    QString place(ExportFormat format, const std::vector<ExportedFile>& files);
    bool mayReplace(const QString& folder, const std::vector<ExportedFile>& files);
    void save(ExportFormat format, FhirChoices choices, const QString& place);
    void report(const QString& text);
    void refuse(const QString& text);

    QWidget& m_panel;
    ShownRecords& m_records;
    std::vector<QAction*> m_copies; // of the selected record, of all
    std::vector<QAction*> m_exports;
};

}
