#include "host/windows/PatientBanner.h"

#include "host/framework/ClinicalContext.h"
#include "host/framework/DisplayText.h"
#include "host/windows/SignLabel.h"
#include "toolkit/ControlStyle.h"
#include "toolkit/FlowLayout.h"
#include "toolkit/Measures.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace health {

namespace {

// A text of the first line as HTML.
class Span {
public:
    Span(const QWidget& banner, double size, Ink ink)
        : m_font(scaled(banner.font(), size))
        , m_colour(colourOf(ink, banner.palette()))
    {
    }

    Span& strong()
    {
        m_font = semibold(m_font);
        return *this;
    }

    // The text does not break.
    QString of(const QString& text) const
    {
        const QString size =
            m_font.pointSizeF() > 0 ? u"%1pt"_s.arg(m_font.pointSizeF(), 0, 'f', 2) : u"%1px"_s.arg(m_font.pixelSize());
        return u"<span style='font-size:%1;font-weight:%2;color:%3'>%4</span>"_s.arg(size)
            .arg(static_cast<int>(m_font.weight()))
            .arg(m_colour.name(), text.toHtmlEscaped().replace(u' ', u"&nbsp;"_s));
    }

private:
    QFont m_font;
    QColor m_colour;
};

QString nameOf(const QWidget& banner, const PatientData& patient)
{
    if (patient.number == 0)
        return Span(banner, TypeSize::Name, Ink::Quiet).strong().of(u"No patient selected"_s);
    const Span quiet(banner, TypeSize::DetailsHeading, Ink::Quiet);
    const Span strong = Span(banner, TypeSize::DetailsHeading, Ink::Words).strong();
    const bool sexKnown = patient.sex == u"F" || patient.sex == u"M";
    QStringList details { strong.of(sexKnown ? patient.sex : displaySex(patient.sex)) };
    if (const QString age = displayAge(patient.birth, QDate::currentDate()); !age.isEmpty())
        details.append(strong.of(age));
    if (const QString birth = displayDate(patient.birthDate); !birth.isEmpty())
        details.append(quiet.of(u"born "_s + birth));
    details.append(quiet.of(u"No. %1"_s.arg(patient.number)));
    return Span(banner, TypeSize::Name, Ink::Words).strong().of(displayName(patient.name)) + u"&nbsp;&nbsp; "_s
        + details.join(quiet.of(u" \u00B7"_s) + u' ');
}

QString spokenName(const PatientData& patient)
{
    if (patient.number == 0)
        return u"No patient selected"_s;
    QStringList parts { displayName(patient.name), displaySex(patient.sex),
        displayAge(patient.birth, QDate::currentDate()), u"born "_s + displayDate(patient.birthDate),
        u"number %1"_s.arg(patient.number) };
    parts.removeAll(QString());
    parts.removeAll(u"born "_s);
    return parts.join(u", "_s);
}

}

PatientBanner::PatientBanner(ClinicalContext& context, ReadAlerts readAlerts)
    : m_context(context)
    , m_readAlerts(std::move(readAlerts))
    , m_name(new QLabel)
    , m_visit(new SignLabel)
    , m_remarks(new FlowLayout)
    , m_patientButton(new QPushButton(u"Select &Patient..."_s))
    , m_visitButton(new QPushButton(u"Select V&isit..."_s))
{
    setAccessibleName(u"Patient"_s);
    m_name->setTextFormat(Qt::RichText);
    m_name->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_name->setWordWrap(true);
    m_remarks->addWidget(m_visit);
    auto* const texts = new QVBoxLayout;
    texts->setSpacing(Measures(*this).u());
    texts->addWidget(m_name);
    texts->addLayout(m_remarks);
    texts->addStretch();
    auto* const layout = new QHBoxLayout(this);
    layout->addLayout(texts, 1);
    layout->addWidget(makeButtons());
    connect(&context, &ClinicalContext::patientChanged, this, &PatientBanner::refresh);
    connect(&context, &ClinicalContext::visitChanged, this, &PatientBanner::refresh);
    m_alertsDue.setSingleShot(true);
    connect(&m_alertsDue, &QTimer::timeout, this, [this] { showAlerts(m_readAlerts()); });
    // The panels report the end of a load by an empty status.
    const auto readAgain = [this] { m_alertsDue.start(0); };
    connect(&context, &ClinicalContext::patientChanged, this, readAgain);
    connect(&context.session(), &HostSession::statusChanged, this, readAgain);
    refresh();
}

QWidget* PatientBanner::makeButtons()
{
    auto* const buttons = new QWidget;
    auto* const layout = new QHBoxLayout(buttons);
    layout->setContentsMargins(0, 0, 0, 0);
    for (QPushButton* const button : { m_patientButton, m_visitButton }) {
        ControlStyle::giveTo(*button);
        layout->addWidget(button);
    }
    connect(m_patientButton, &QPushButton::clicked, this, &PatientBanner::patientWanted);
    connect(m_visitButton, &QPushButton::clicked, this, &PatientBanner::visitWanted);
    return buttons;
}

void PatientBanner::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::PaletteChange)
        refresh();
}

void PatientBanner::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    window()->installEventFilter(this);
}

// A form may have read the asthma registry.
bool PatientBanner::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::WindowUnblocked)
        m_alertsDue.start(0);
    return QWidget::eventFilter(watched, event);
}

void PatientBanner::layOut()
{
    const Measures measures(*this);
    const int margin = measures.windowMargin();
    layout()->setContentsMargins(margin, measures.units(1.5), margin, measures.units(3));
    layout()->setSpacing(measures.groupGap());
    m_patientButton->parentWidget()->layout()->setSpacing(measures.units(2));
    m_remarks->setGaps({ measures.units(7), measures.u() });
}

void PatientBanner::refresh()
{
    layOut();
    const PatientData& patient = m_context.patient();
    m_name->setText(nameOf(*this, patient));
    m_name->setAccessibleName(spokenName(patient));
    m_visitButton->setEnabled(patient.number != 0);
    m_patientButton->setProperty(FilledProperty, patient.number == 0);
    m_patientButton->update();
    if (patient.number == 0)
        showAlerts({});
    showVisit();
}

void PatientBanner::showVisit()
{
    const VisitData& visit = m_context.visit();
    if (m_context.patient().number == 0)
        m_visit->say(u"Records are listed when a patient is selected."_s, Sign::None, Ink::Quiet);
    else if (visit.number == 0)
        m_visit->say(u"No visit selected"_s, Sign::Caution, Ink::Caution);
    else
        m_visit->say(u"Visit %1, %2"_s.arg(displayDate(visit.date), visit.location), Sign::Bar, Ink::Visit);
}

void PatientBanner::showAlerts(const std::vector<PatientAlert>& alerts)
{
    qDeleteAll(std::exchange(m_alerts, {}));
    for (const PatientAlert& alert : alerts) {
        auto* const label = new SignLabel;
        const bool caution = alert.kind == PatientAlert::Kind::Caution;
        label->say(QString::fromStdWString(alert.text), caution ? Sign::Caution : Sign::Calendar,
            caution ? Ink::Caution : Ink::Quiet);
        m_remarks->addWidget(label);
        m_alerts.append(label);
    }
    updateGeometry();
}

}
