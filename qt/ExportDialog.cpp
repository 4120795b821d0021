#include "qt/ExportDialog.h"

#include "qt/ControlStyle.h"
#include "toolkit/Measures.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace health {

using namespace Qt::StringLiterals;

namespace {

constexpr double Width = 34; // ems

QLabel* addSentence(QVBoxLayout& column, const QString& text)
{
    auto* const label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    column.addWidget(label);
    return label;
}

}

ExportDialog::ExportDialog(ExportFormat format, const QString& extent, const QString& remark, QWidget* parent)
    : QDialog(parent)
{
    const bool fhir = format == ExportFormat::Fhir;
    const Measures measures(*this);
    setWindowTitle(fhir ? u"Export as FHIR"_s : u"Export as CSV"_s);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(
        measures.formMargin(), measures.formMargin(), measures.formMargin(), measures.formMargin());
    column->setSpacing(measures.groupGap());
    const QString what = extent + (fhir ? u". One file."_s : u". One file for each kind of record."_s);
    QLabel* const heading = addSentence(*column, what);
    heading->setFont(scaled(semibold(font()), TypeSize::DetailsHeading));
    const QString warning = remark.isEmpty() ? QString() : u"The list is incomplete. "_s + remark;
    if (!warning.isEmpty())
        addSentence(*column, warning);
    if (fhir) {
        m_guardian = addChoice(
            u"Name the &mother or guardian"_s, u"Birth measurements name her or him, who is another patient."_s);
        m_snomed =
            addChoice(u"Add codes of &SNOMED CT"_s, u"For receivers in countries and institutions with a licence."_s);
    }
    const QString care = u"The files contain the patient's data. Only you can read them on this machine."_s;
    addSentence(
        *column, fhir ? u"The file contains the patient's data. Only you can read it on this machine."_s : care);
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Cancel);
    QPushButton* const choose =
        buttons->addButton(fhir ? u"Choose &File..."_s : u"Choose &Folder..."_s, QDialogButtonBox::AcceptRole);
    for (QAbstractButton* const button : buttons->buttons())
        ControlStyle::giveTo(*button);
    column->addWidget(buttons);
    choose->setDefault(true); // in the dialog, which is to know it
    choose->setFocus();
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    setAccessibleDescription(warning.isEmpty() ? what : what + u' ' + warning); // spoken when the dialog opens
    setMinimumWidth(measures.ems(Width));
}

QCheckBox* ExportDialog::addChoice(const QString& caption, const QString& tip)
{
    auto* const box = new QCheckBox(caption);
    box->setToolTip(tip);
    box->setAccessibleDescription(tip);
    layout()->addWidget(box);
    return box;
}

FhirChoices ExportDialog::choices() const
{
    return { .namesGuardian = m_guardian && m_guardian->isChecked(), .usesSnomed = m_snomed && m_snomed->isChecked() };
}

}
