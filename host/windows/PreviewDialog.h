#pragma once

#include <QDialog>
#include <QPrinter>

class QLabel;
class QPrintPreviewWidget;

namespace health {

class PrintedDocument;

// Shows a document page by page; prints it or saves it as PDF.
class PreviewDialog : public QDialog {
    Q_OBJECT
public:
    // The document must outlive the dialog.
    PreviewDialog(const PrintedDocument& document, QWidget* parent);

protected:
    void showEvent(QShowEvent* event) override;

private:
    void setUpPreview();
    QWidget* makeButtons();
    void showTop();
    QString proposedFile() const;
    void print();
    void savePdf();

    const PrintedDocument& m_document;
    QPrinter m_printer;
    QPrintPreviewWidget* m_preview;
    QLabel* m_saved; // shows where
};

}
