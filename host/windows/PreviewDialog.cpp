#include "host/windows/PreviewDialog.h"

#include "api/Failure.h"
#include "host/report/PrintedDocument.h"
#include "host/windows/FailureBox.h"
#include "host/windows/ListPicker.h"
#include "toolkit/ControlStyle.h"
#include "toolkit/Measures.h"

#include <QDate>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QGraphicsView>
#include <QLabel>
#include <QPrintDialog>
#include <QPrintPreviewWidget>
#include <QPrinterInfo>
#include <QPushButton>
#include <QScrollBar>
#include <QStandardPaths>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace health {

PreviewDialog::PreviewDialog(const PrintedDocument& document, QWidget* parent)
    : QDialog(parent)
    , m_document(document)
    , m_printer(QPrinter::HighResolution)
    , m_saved(new QLabel)
{
    setWindowTitle(document.title());
    if (QPrinterInfo::availablePrinters().isEmpty()) {
        m_printer.setOutputFormat(QPrinter::PdfFormat);
        PrintedDocument::setUsualPaper(m_printer);
    } else {
        PrintedDocument::setMargins(m_printer);
    }
    setUpPreview();
    const Measures measures(*this);
    auto* const layout = new QVBoxLayout(this);
    const int margin = measures.windowMargin();
    layout->setContentsMargins(margin, margin, margin, margin);
    layout->setSpacing(measures.units(3));
    layout->addWidget(m_preview, 1);
    m_saved->setTextFormat(Qt::PlainText);
    m_saved->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_saved->setWordWrap(true);
    m_saved->hide();
    layout->addWidget(m_saved);
    layout->addWidget(makeButtons());
    resizeToScreen(*this, { fontMetrics().horizontalAdvance(u'x') * 110, fontMetrics().height() * 44 });
}

void PreviewDialog::setUpPreview()
{
    m_preview = new QPrintPreviewWidget(&m_printer);
    m_preview->setAccessibleName(windowTitle());
    // The pages are pictures, so their text is the description, for screen readers.
    if (auto* const view = m_preview->findChild<QGraphicsView*>()) {
        for (QWidget* const spoken : { static_cast<QWidget*>(view), view->viewport() }) {
            spoken->setAccessibleName(u"Pages"_s);
            spoken->setAccessibleDescription(m_document.spokenText());
        }
    }
    connect(m_preview, &QPrintPreviewWidget::paintRequested, this,
        [this](QPrinter* printer) { m_document.paint(*printer); });
}

QWidget* PreviewDialog::makeButtons()
{
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    const auto add = [&](const QString& caption) {
        QPushButton* const button = buttons->addButton(caption, QDialogButtonBox::ActionRole);
        button->setAutoDefault(false);
        return button;
    };
    QPushButton* const printButton = add(u"&Print..."_s);
    if (QPrinterInfo::availablePrinters().isEmpty()) {
        printButton->setEnabled(false);
        printButton->setToolTip(u"No printer is set up on this computer."_s);
        printButton->setAccessibleDescription(printButton->toolTip());
    }
    connect(printButton, &QPushButton::clicked, this, &PreviewDialog::print);
    connect(add(u"Save as P&DF..."_s), &QPushButton::clicked, this, &PreviewDialog::savePdf);
    connect(add(u"Zoom &In"_s), &QPushButton::clicked, this, [this] { m_preview->zoomIn(); });
    connect(add(u"Zoom &Out"_s), &QPushButton::clicked, this, [this] { m_preview->zoomOut(); });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    buttons->button(QDialogButtonBox::Close)->setDefault(true);
    for (QAbstractButton* const button : buttons->buttons())
        ControlStyle::giveTo(*button);
    return buttons;
}

// The width to fit is known only after showing.
void PreviewDialog::showEvent(QShowEvent* event)
{
    QDialog::showEvent(event);
    QMetaObject::invokeMethod(this, &PreviewDialog::showTop, Qt::QueuedConnection);
}

void PreviewDialog::showTop()
{
    m_preview->fitToWidth();
    if (auto* const view = m_preview->findChild<QGraphicsView*>())
        view->verticalScrollBar()->setValue(view->verticalScrollBar()->minimum());
}

void PreviewDialog::print()
{
    QPrintDialog dialog(&m_printer, this);
    if (dialog.exec() == Accepted && m_document.paint(m_printer) == 0)
        showFailure(this, u"Print"_s, u"%1 cannot be printed."_s.arg(windowTitle()));
}

// Without the patient's name, because other people may see file names.
QString PreviewDialog::proposedFile() const
{
    const QString name =
        windowTitle().toLower().replace(u'/', u'-') + u' ' + QDate::currentDate().toString(Qt::ISODate) + u".pdf"_s;
    return QDir(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)).filePath(name);
}

void PreviewDialog::savePdf()
{
    const QFileInfo proposed(proposedFile());
    QFileDialog dialog(this, u"Save as PDF"_s, proposed.path(), u"PDF files (*.pdf)"_s);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(u"pdf"_s);
    dialog.selectFile(proposed.fileName());
    if (dialog.exec() != Accepted)
        return;
    try {
        const QString path = dialog.selectedFiles().value(0);
        m_document.savePdf(path);
        m_saved->setText(u"Saved as %1."_s.arg(QDir::toNativeSeparators(path)));
        m_saved->show();
    } catch (const Failure& failure) {
        showFailure(this, u"Save as PDF"_s, QString::fromStdWString(failure.description()));
    }
}

}
