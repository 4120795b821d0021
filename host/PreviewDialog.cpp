#include "host/PreviewDialog.h"

#include "host/FailureBox.h"
#include "host/ListPicker.h"
#include "platform/Failure.h"

#include <QDialogButtonBox>
#include <QFileDialog>
#include <QGraphicsView>
#include <QPrintDialog>
#include <QPrintPreviewWidget>
#include <QPrinterInfo>
#include <QPushButton>
#include <QVBoxLayout>

namespace health {

PreviewDialog::PreviewDialog(const ReportPages& pages, const QString& title, QWidget* parent)
    : QDialog(parent)
    , m_pages(pages)
    , m_printer(QPrinter::HighResolution)
{
    setWindowTitle(title);
    if (QPrinterInfo::availablePrinters().isEmpty()) {
        m_printer.setOutputFormat(QPrinter::PdfFormat);
        ReportPages::setUsualPaper(m_printer);
    }
    m_preview = new QPrintPreviewWidget(&m_printer);
    m_preview->setAccessibleName(title);
    // The pages are pictures: screen readers speak their text as the description.
    if (auto* const view = m_preview->findChild<QGraphicsView*>()) {
        for (QWidget* const spoken : { static_cast<QWidget*>(view), view->viewport() }) {
            spoken->setAccessibleName(tr("Pages"));
            spoken->setAccessibleDescription(
                QStringList(pages.lines()).replaceInStrings(QStringLiteral("\f"), QString()).join(u'\n'));
        }
    }
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
    resizeToScreen(*this, { fontMetrics().horizontalAdvance(u'x') * 110, fontMetrics().height() * 44 });
    m_preview->fitToWidth();
}

void PreviewDialog::print()
{
    QPrintDialog dialog(&m_printer, this);
    if (dialog.exec() == Accepted && m_pages.paint(m_printer) == 0)
        showFailure(this, tr("Print"), tr("The report cannot be printed."));
}

void PreviewDialog::savePdf()
{
    QFileDialog dialog(this, tr("Save as PDF"), QString(), tr("PDF files (*.pdf)"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QStringLiteral("pdf"));
    dialog.selectFile(QStringLiteral("report.pdf"));
    if (dialog.exec() != Accepted)
        return;
    try {
        m_pages.savePdf(dialog.selectedFiles().value(0));
    } catch (const Failure& failure) {
        showFailure(this, tr("Save as PDF"), QString::fromStdWString(failure.description()));
    }
}

}
