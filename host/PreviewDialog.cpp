#include "host/PreviewDialog.h"

#include "platform/Failure.h"

#include <QDialogButtonBox>
#include <QFileDialog>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPrintPreviewWidget>
#include <QPrinterInfo>
#include <QPushButton>
#include <QVBoxLayout>

namespace health {

PreviewDialog::PreviewDialog(ReportPages pages, const QString& title, QWidget* parent)
    : QDialog(parent)
    , m_pages(std::move(pages))
    , m_printer(QPrinter::HighResolution)
{
    setWindowTitle(title);
    if (QPrinterInfo::availablePrinters().isEmpty())
        m_printer.setOutputFormat(QPrinter::PdfFormat);
    m_preview = new QPrintPreviewWidget(&m_printer);
    m_preview->setAccessibleName(title);
    connect(
        m_preview, &QPrintPreviewWidget::paintRequested, this, [this](QPrinter* printer) { m_pages.paint(*printer); });

    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    const auto add = [&](const QString& caption) {
        QPushButton* const button = buttons->addButton(caption, QDialogButtonBox::ActionRole);
        button->setAutoDefault(false);
        return button;
    };
    QPushButton* const printButton = add(tr("&Print..."));
    printButton->setEnabled(!QPrinterInfo::availablePrinters().isEmpty());
    connect(printButton, &QPushButton::clicked, this, &PreviewDialog::print);
    connect(add(tr("Save as P&DF...")), &QPushButton::clicked, this, &PreviewDialog::savePdf);
    connect(add(tr("Zoom &In")), &QPushButton::clicked, this, [this] { m_preview->zoomIn(); });
    connect(add(tr("Zoom &Out")), &QPushButton::clicked, this, [this] { m_preview->zoomOut(); });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    buttons->button(QDialogButtonBox::Close)->setDefault(true);

    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(m_preview, 1);
    layout->addWidget(buttons);
    resize(fontMetrics().horizontalAdvance(u'x') * 110, fontMetrics().height() * 44);
    m_preview->fitToWidth();
}

void PreviewDialog::print()
{
    QPrintDialog dialog(&m_printer, this);
    if (dialog.exec() == Accepted)
        m_preview->print();
}

void PreviewDialog::savePdf()
{
    const QString path =
        QFileDialog::getSaveFileName(this, tr("Save as PDF"), QStringLiteral("report.pdf"), tr("PDF files (*.pdf)"));
    if (path.isEmpty())
        return;
    try {
        m_pages.savePdf(path);
    } catch (const Failure& failure) {
        QMessageBox::critical(this, tr("Save as PDF"), QString::fromStdWString(failure.description()));
    }
}

}
