#include "host/windows/EmergencyVisits.h"

#include "api/Events.h"
#include "api/Failure.h"
#include "host/framework/ClinicalContext.h"
#include "host/framework/DisplayText.h"
#include "host/session/Replies.h"
#include "toolkit/ControlStyle.h"
#include "toolkit/Measures.h"

#include <QDialogButtonBox>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QRegularExpression>
#include <QVBoxLayout>

#include <utility>

using namespace Qt::StringLiterals;

namespace health {

namespace {

// Pieces of a line of MEVVER GET, counted from 0.
enum Piece {
    Number,
    Locked,
    VisitDate,
    Urgency,
    Arrival,
    OtherArrival,
    EnteredBy,
    Informant,
    Notified,
    Disposition,
    OtherDisposition,
    Departure,
    DepartureAgainstAdvice,
    Condition
};

QString shown(const QStringList& pieces, Piece piece)
{
    // Privately owned vehicle, against medical advice
    static const QRegularExpression abbreviation(u"\\b(pov|ama)\\b"_s, QRegularExpression::CaseInsensitiveOption);
    QString text = displayName(pieces.value(piece).section(u'|', 0, 0));
    for (auto found = abbreviation.match(text); found.hasMatch(); found = abbreviation.match(text, found.capturedEnd()))
        text.replace(found.capturedStart(), found.capturedLength(), found.captured().toUpper());
    return text;
}

// The first of two pieces that has a text.
QString either(const QStringList& pieces, Piece one, Piece other)
{
    const QString text = shown(pieces, one);
    return text.isEmpty() ? shown(pieces, other) : text;
}

QString departure(const QStringList& pieces)
{
    const QString text = either(pieces, Departure, DepartureAgainstAdvice);
    const QString date = displayDate(text);
    return date.isEmpty() ? QString(text).replace(u'@', u' ') : date;
}

RowList::Row rowOf(const QStringList& pieces)
{
    const QString locked = pieces.value(Locked) == u"1" ? u"Locked"_s : QString();
    return { pieces[Number],
        { displayDate(pieces.value(VisitDate).section(u'|', 0, 0)), shown(pieces, Urgency),
            either(pieces, OtherArrival, Arrival), either(pieces, OtherDisposition, Disposition), departure(pieces),
            pieces.value(Condition), locked } };
}

}

EmergencyVisits::EmergencyVisits(ClinicalContext& context, Open open, QWidget* parent)
    : QDialog(parent)
    , m_context(context)
    , m_open(std::move(open))
    , m_list(new RowList(
          { u"Date"_s, u"Urgency"_s, u"Arrival"_s, u"Disposition"_s, u"Departure"_s, u"Condition"_s, u""_s }))
    , m_patient(new QLabel)
    , m_remark(new QLabel)
    , m_add(new QPushButton(u"&Add"_s))
    , m_edit(new QPushButton(u"&Edit"_s))
{
    setWindowTitle(u"Emergency Visits"_s);
    m_list->setAccessibleName(windowTitle());
    for (const auto& [column, letters] :
        { std::pair { 0, 19 }, { 1, 16 }, { 2, 16 }, { 3, 18 }, { 4, 19 }, { 5, 20 }, { 6, 8 } })
        m_list->setColumn(column, letters);
    for (QLabel* const label : { m_patient, m_remark }) {
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
    }
    const Measures measures(*this);
    m_patient->setFont(semibold(font()));
    auto* const layout = new QVBoxLayout(this);
    const int margin = measures.formMargin();
    layout->setContentsMargins(margin, margin, margin, margin);
    layout->setSpacing(measures.units(2.5));
    layout->addWidget(m_patient);
    layout->addWidget(m_list, 1);
    layout->addWidget(m_remark);
    layout->addWidget(makeButtons());
    m_list->installEventFilter(this);
    connect(m_list, &RowList::cellDoubleClicked, this, &EmergencyVisits::edit);
    connect(m_list, &RowList::itemSelectionChanged, this, &EmergencyVisits::updateButtons);
    connect(&context, &ClinicalContext::patientCommitted, this, &EmergencyVisits::followPatient);
    resizeToScreen(*this, { fontMetrics().horizontalAdvance(u'x') * 125, fontMetrics().height() * 22 });
}

EmergencyVisits::~EmergencyVisits()
{
    if (!m_followed.empty())
        m_context.session().unregisterEvent(m_followed, *this);
}

QWidget* EmergencyVisits::makeButtons()
{
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    buttons->addButton(m_add, QDialogButtonBox::ActionRole);
    buttons->addButton(m_edit, QDialogButtonBox::ActionRole);
    for (QAbstractButton* const button : buttons->buttons()) {
        ControlStyle::giveTo(*button);
        static_cast<QPushButton*>(button)->setAutoDefault(false); // Enter edits the selected row
    }
    connect(m_add, &QPushButton::clicked, this, &EmergencyVisits::add);
    connect(m_edit, &QPushButton::clicked, this, &EmergencyVisits::edit);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::close);
    return buttons;
}

void EmergencyVisits::present()
{
    followPatient();
    load();
    show();
    raise();
    activateWindow();
    m_list->setFocus();
}

// Without a patient the page has nothing to show.
void EmergencyVisits::followPatient()
{
    const PatientData& patient = m_context.patient();
    const Text event = patient.number == 0 ? Text() : Text(RecordsEventPrefix) + std::to_wstring(patient.number);
    const Text former = std::exchange(m_followed, event);
    if (former == event)
        return;
    if (!former.empty())
        m_context.session().unregisterEvent(former, *this);
    if (event.empty()) {
        close();
        return;
    }
    m_context.session().registerEvent(event, *this);
    if (isVisible())
        reload();
}

void EmergencyVisits::EventCallback(TextView, TextView)
{
    if (isVisible())
        reload();
}

// Shows a failure in place of the rows.
void EmergencyVisits::reload()
{
    try {
        load();
    } catch (const Failure& failure) {
        m_records.clear();
        m_list->setRows({});
        m_remark->setText(QString::fromStdWString(failure.description()));
        updateButtons();
    }
}

void EmergencyVisits::load()
{
    const PatientData& patient = m_context.patient();
    m_patient->setText(u"%1 \u00B7 No. %2"_s.arg(displayName(patient.name)).arg(patient.number));
    const auto lines = linesOf(m_context.session().callList(L"MEVVER GET", std::to_wstring(patient.number)));
    const QString key = m_list->selectedKey();
    QList<RowList::Row> rows;
    m_records.clear();
    for (const QStringList& pieces : lines) {
        rows.append(rowOf(pieces));
        m_records[pieces[Number]] = { pieces[Number].toStdWString(),
            pieces.value(VisitDate).section(u'|', 1, 1).toStdWString(), pieces.value(Locked) == u"1" };
    }
    m_list->setRows(rows);
    m_list->selectKey(key);
    m_remark->setText(rows.isEmpty() ? u"No emergency visits have been recorded."_s : u"%1 found."_s.arg(rows.size()));
    updateButtons();
}

EmergencyVisits::Record EmergencyVisits::selected() const
{
    const auto found = m_records.find(m_list->selectedKey());
    return found == m_records.end() ? Record() : found->second;
}

void EmergencyVisits::updateButtons()
{
    const Record record = selected();
    const QString refusal = record.number.empty() ? u"Select a record in the list."_s
        : record.isLocked                         ? u"This record is locked."_s
                                                  : QString();
    m_edit->setEnabled(refusal.isEmpty());
    m_edit->setToolTip(refusal);
    m_edit->setAccessibleDescription(refusal);
}

void EmergencyVisits::add()
{
    if (!m_context.mayChange())
        return;
    openForm({});
}

// A picker before the form belongs to the main window, which then gets the focus back.
void EmergencyVisits::openForm(const Record& record)
{
    m_open(record.number, record.visit);
    if (!isVisible())
        return;
    reload();
    activateWindow();
}

void EmergencyVisits::edit()
{
    if (!m_edit->isEnabled()) {
        m_remark->setText(m_edit->toolTip());
        return;
    }
    if (!m_context.mayChange())
        return;
    openForm(selected());
}

bool EmergencyVisits::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return QDialog::eventFilter(watched, event);
    const auto* const key = static_cast<QKeyEvent*>(event);
    if (key->key() != Qt::Key_Return && key->key() != Qt::Key_Enter)
        return QDialog::eventFilter(watched, event);
    if (!key->isAutoRepeat())
        edit();
    return true;
}

}
