#include "host/windows/LaboratoryWindow.h"

#include "host/session/DisturbedTransport.h"
#include "host/windows/ActionButton.h"
#include "toolkit/Measures.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace health {

namespace {

constexpr int LongestDelay = 10'000; // milliseconds
constexpr int MostCalls = 1000;
constexpr int LargestStorm = 1000; // a second

template<typename Choice>
Choice chosen(const QComboBox& box)
{
    return static_cast<Choice>(box.currentIndex());
}

}

QString describe(const Disturbances& disturbances)
{
    QStringList parts;
    if (disturbances.isStopped)
        parts.append(u"server stopped"_s);
    if (disturbances.delay > 0)
        parts.append(u"answers delayed by %1 ms"_s.arg(disturbances.delay));
    if (disturbances.loseEvery == 1)
        parts.append(u"connection lost at every call"_s);
    else if (disturbances.loseEvery > 1)
        parts.append(u"connection lost every %1 calls"_s.arg(disturbances.loseEvery));
    if (disturbances.losesNextSave)
        parts.append(u"connection lost at the next save"_s);
    if (disturbances.garbled == Disturbances::Garbled::NextReply)
        parts.append(u"next reply garbled"_s);
    else if (disturbances.garbled == Disturbances::Garbled::EveryReply)
        parts.append(u"every reply garbled"_s);
    if (disturbances.refused == Disturbances::Refused::NextSave)
        parts.append(u"next save refused"_s);
    else if (disturbances.refused == Disturbances::Refused::EveryCall)
        parts.append(u"every call refused"_s);
    if (disturbances.eventsPerSecond > 0)
        parts.append(u"%1 events a second"_s.arg(disturbances.eventsPerSecond));
    return parts.isEmpty() ? u"normal"_s : parts.join(u", "_s);
}

LaboratoryWindow::LaboratoryWindow(DisturbedTransport& transport, QWidget* parent)
    : QDialog(parent)
    , m_transport(&transport)
    , m_delay(makeNumber(LongestDelay, 100, u" ms"_s))
    , m_loseEvery(makeNumber(MostCalls, 1, u" calls"_s))
    , m_loseSave(new QCheckBox(u"Lose it at the next sa&ve"_s))
    , m_garbled(new QComboBox)
    , m_refused(new QComboBox)
    , m_events(makeNumber(LargestStorm, 10, u" a second"_s))
    , m_stopped(new QCheckBox(u"&Stop the server"_s))
    , m_state(new QLabel)
{
    setWindowTitle(u"Laboratory"_s);
    auto* const layout = new QVBoxLayout(this);
    auto* const purpose = new QLabel(u"For tests and support, with sample data only."_s);
    purpose->setFont(semibold(font()));
    layout->addWidget(purpose);
    auto* const form = new QFormLayout;
    setUpFields(*form);
    layout->addLayout(form);
    m_state->setTextFormat(Qt::PlainText);
    m_state->setWordWrap(true);
    layout->addWidget(m_state);
    layout->addStretch(1);
    layout->addWidget(makeButtons());
    connect(m_transport, &DisturbedTransport::disturbed, this, &LaboratoryWindow::follow);
    follow();
}

QSpinBox* LaboratoryWindow::makeNumber(int most, int step, const QString& unit)
{
    auto* const box = new QSpinBox(this);
    box->setRange(0, most);
    box->setSingleStep(step);
    box->setSuffix(unit);
    box->setSpecialValueText(u"Off"_s);
    connect(box, &QSpinBox::valueChanged, this, &LaboratoryWindow::apply);
    return box;
}

void LaboratoryWindow::setUpFields(QFormLayout& form)
{
    m_garbled->addItems({ u"Nothing"_s, u"The next reply"_s, u"Every reply"_s });
    m_refused->addItems({ u"Nothing"_s, u"The next save"_s, u"Every call"_s });
    form.addRow(u"&Delay each answer by"_s, m_delay);
    form.addRow(u"&Lose the connection every"_s, m_loseEvery);
    form.addRow(m_loseSave);
    form.addRow(u"&Garble"_s, m_garbled);
    form.addRow(u"&Refuse"_s, m_refused);
    form.addRow(u"Raise &events"_s, m_events);
    form.addRow(m_stopped);
    for (QComboBox* const box : { m_garbled, m_refused })
        connect(box, &QComboBox::currentIndexChanged, this, &LaboratoryWindow::apply);
    for (QCheckBox* const box : { m_loseSave, m_stopped })
        connect(box, &QCheckBox::toggled, this, &LaboratoryWindow::apply);
}

QWidget* LaboratoryWindow::makeButtons()
{
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    const auto add = [&](const QString& caption, const QString& tip, auto work) {
        connect(addActionButton(*buttons, caption, tip), &QPushButton::clicked, this, work);
    };
    add(u"&Normal"_s, u"Switch all disturbances off"_s, [this] { m_transport->disturb({}); });
    add(u"Lose Connection N&ow"_s, u"Cut the connection once"_s, [this] { m_transport->loseConnection(); });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    return buttons;
}

void LaboratoryWindow::apply()
{
    Disturbances wanted;
    wanted.delay = m_delay->value();
    wanted.loseEvery = m_loseEvery->value();
    wanted.losesNextSave = m_loseSave->isChecked();
    wanted.garbled = chosen<Disturbances::Garbled>(*m_garbled);
    wanted.refused = chosen<Disturbances::Refused>(*m_refused);
    wanted.eventsPerSecond = m_events->value();
    wanted.isStopped = m_stopped->isChecked();
    m_transport->disturb(wanted);
}

void LaboratoryWindow::follow()
{
    const Disturbances& now = m_transport->disturbances();
    const QSignalBlocker blockers[] { QSignalBlocker(m_delay), QSignalBlocker(m_loseEvery), QSignalBlocker(m_loseSave),
        QSignalBlocker(m_garbled), QSignalBlocker(m_refused), QSignalBlocker(m_events), QSignalBlocker(m_stopped) };
    m_delay->setValue(now.delay);
    m_loseEvery->setValue(now.loseEvery);
    m_loseSave->setChecked(now.losesNextSave);
    m_garbled->setCurrentIndex(static_cast<int>(now.garbled));
    m_refused->setCurrentIndex(static_cast<int>(now.refused));
    m_events->setValue(now.eventsPerSecond);
    m_stopped->setChecked(now.isStopped);
    m_state->setText(u"State: %1."_s.arg(describe(now)));
}

}
