#include "host/windows/PatientBanner.h"

#include "host/framework/ClinicalContext.h"
#include "host/framework/DisplayText.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace health {

PatientBanner::PatientBanner(ClinicalContext& context, QWidget* parent)
    : QFrame(parent)
    , m_context(context)
    , m_name(new QLabel)
    , m_details(new QLabel)
    , m_visit(new QLabel)
    , m_visitButton(new QPushButton(u"Select V&isit..."_s))
{
    setFrameShape(StyledPanel);
    setAccessibleName(u"Patient"_s);
    for (QLabel* label : { m_name, m_details, m_visit }) {
        label->setTextFormat(Qt::PlainText);
        label->setTextInteractionFlags(Qt::TextSelectableByMouse);
        label->setWordWrap(true);
    }
    auto* const patientButton = new QPushButton(u"Select &Patient..."_s);
    auto* const texts = new QVBoxLayout;
    texts->addWidget(m_name);
    texts->addWidget(m_details);
    texts->addWidget(m_visit);
    auto* const buttons = new QVBoxLayout;
    buttons->addWidget(patientButton);
    buttons->addWidget(m_visitButton);
    buttons->addStretch();
    auto* const layout = new QHBoxLayout(this);
    layout->addLayout(texts, 1);
    layout->addLayout(buttons);

    connect(patientButton, &QPushButton::clicked, this, &PatientBanner::patientWanted);
    connect(m_visitButton, &QPushButton::clicked, this, &PatientBanner::visitWanted);
    connect(&context, &ClinicalContext::patientChanged, this, &PatientBanner::refresh);
    connect(&context, &ClinicalContext::visitChanged, this, &PatientBanner::refresh);
    refresh();
}

void PatientBanner::changeEvent(QEvent* event)
{
    QFrame::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        refresh();
}

void PatientBanner::refresh()
{
    QFont large = font();
    large.setPointSizeF(large.pointSizeF() * 1.3);
    large.setBold(true);
    m_name->setFont(large);

    const PatientData& patient = m_context.patient();
    const bool selected = patient.number != 0;
    m_name->setText(selected ? displayName(patient.name) : u"No patient selected"_s);
    m_details->setVisible(selected);
    m_visit->setVisible(selected);
    m_visitButton->setEnabled(selected);
    if (!selected)
        return;
    m_details->setText(u"Number %1   %2   Born %3   Age %4"_s.arg(QString::number(patient.number),
        displaySex(patient.sex), displayDate(patient.birthDate), displayAge(patient.birth, QDate::currentDate())));
    const VisitData& visit = m_context.visit();
    m_visit->setText(
        visit.number == 0 ? u"No visit selected"_s : u"Visit %1, %2"_s.arg(displayDate(visit.date), visit.location));
}

}
