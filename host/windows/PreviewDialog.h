#pragma once

#include "host/report/ReportPages.h"

#include <QDialog>
#include <QPrinter>

class QLabel;
class QPrintPreviewWidget;

namespace health {

// Shows a report page by page; prints it or saves it as PDF.
class PreviewDialog : public QDialog {
    Q_OBJECT
public:
    PreviewDialog(const ReportPages& pages, const QString& title, QWidget* parent);

protected:
    void showEvent(QShowEvent* event) override;

private:
    void setUpPreview();
    QWidget* makeButtons();
    void showTop();
    QString proposedFile() const;
    void print();
    void savePdf();

    ReportPages m_pages;
    QPrinter m_printer;
    QPrintPreviewWidget* m_preview;
    QLabel* m_saved; // shows where
};

}
