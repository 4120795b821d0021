#include "host/tour/Tour.h"

#include "api/RecordTypeNumber.h"
#include "host/desktop/PrivateFile.h"
#include "host/framework/DisplayText.h"
#include "host/session/Replies.h"
#include "host/tour/PanelScenes.h"
#include "host/windows/MainWindow.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QKeyEvent>
#include <QLineEdit>

#include <cstdio>
#include <utility>

using namespace Qt::StringLiterals;

namespace health {

namespace {

// Patients of the sample data whose records show every form.
constexpr long Patients[] = { 1, 3, 5, 6, 2, 11, 13, 16 };
constexpr int YoungChild = 7 * 12; // months of age
constexpr int WatchMilliseconds = 120;

void pressKey(QWidget& widget, Qt::Key key)
{
    for (const auto type : { QEvent::KeyPress, QEvent::KeyRelease }) {
        QKeyEvent event(type, key, Qt::NoModifier);
        QCoreApplication::sendEvent(&widget, &event);
    }
}

bool isFemale(const PatientData& patient) { return patient.sex == u"F"; }

bool isYoungChild(const PatientData& patient)
{
    return ageInMonths(patient.birth, QDate::currentDate()).value_or(YoungChild) < YoungChild;
}

bool isAnyone(const PatientData&) { return true; }

}

struct Tour::Editor {
    RecordTypeNumber type;
    const char* name; // in the names of the pictures
    const wchar_t* list; // the call that lists the records; null: one record per patient
    bool (*isFor)(const PatientData& patient);
};

const Tour::Editor Tour::Editors[] = {
    { RecordTypeNumber::Reproductive, "reproductive", nullptr, isFemale },
    { RecordTypeNumber::InfantFeeding, "infant-feeding", L"MEVVIF GET", isYoungChild },
    { RecordTypeNumber::BirthMeasurements, "birth-measurements", nullptr, isYoungChild },
    { RecordTypeNumber::FunctionalStatus, "functional-status", L"MEVVELD GET", isAnyone },
    { RecordTypeNumber::Asthma, "asthma-status", L"MEVVAST GET", isAnyone },
    { RecordTypeNumber::TreatmentContract, "tx-contract", L"MEVVTXC GET", isAnyone },
    { RecordTypeNumber::Refusal, "refusal", L"MEVREF GET", isAnyone },
};

Tour::Tour(MainWindow& window, const QString& folder)
    : m_window(window)
    , m_folder(folder)
{
    connect(&m_watch, &QTimer::timeout, this, &Tour::drawDialog);
}

int Tour::run()
{
    if (!QDir().mkpath(m_folder))
        return -1;
    m_watch.start(WatchMilliseconds);
    for (const long patient : Patients)
        visitPatient(patient);
    m_watch.stop();
    PanelScenes(m_window, [this](const QString& name) { save(m_window, name); }).run();
    return m_failed ? -1 : m_pictures;
}

void Tour::visitPatient(long number)
{
    std::printf("Patient %ld, after %d pictures\n", number, m_pictures);
    std::fflush(stdout);
    m_window.context().selectPatient(number);
    const auto visits = linesOf(m_window.context().session().callList(L"MEVHOST VISITS", std::to_wstring(number)));
    if (!visits.isEmpty())
        m_window.context().selectVisit({ visits[0][0].toLong(), visits[0].value(1), displayName(visits[0].value(2)) });
    QApplication::processEvents();
    m_patient = u"patient-%1"_s.arg(number);
    save(m_window, m_patient);
    for (const Editor& editor : Editors) {
        if (editor.isFor(m_window.context().patient()))
            openEditors(editor);
    }
    openEmergencyVisits();
    if (number == Patients[0])
        openLookup();
}

// Opens an editor on the first record, and to add one.
void Tour::openEditors(const Editor& editor)
{
    const QString name = QString::fromLatin1(editor.name);
    if (!editor.list)
        return open(editor.type, {}, u"-edit-"_s + name);
    const QList<QStringList> found = records(editor.list);
    if (!found.isEmpty())
        open(editor.type, found[0], u"-edit-"_s + name);
    open(editor.type, {}, u"-add-"_s + name);
}

void Tour::openEmergencyVisits()
{
    const QList<QStringList> found = records(L"MEVVER GET");
    for (const QStringList& record : found)
        open(RecordTypeNumber::EmergencyRoom, record, u"-edit-emergency-visit-"_s + record[0]);
    if (!found.isEmpty())
        open(RecordTypeNumber::EmergencyRoom, {}, u"-add-emergency-visit"_s);
}

// Searches for a provider by a letter that several names begin with.
void Tour::openLookup()
{
    m_searches = true;
    open(RecordTypeNumber::TreatmentContract, {}, u"-add-tx-contract-search"_s);
    m_searches = false;
}

// Opens the editor of a record (the pieces of its line in the list reply; empty to add one). Returns when the editor is
// closed.
void Tour::open(RecordTypeNumber type, const QStringList& record, const QString& picture)
{
    m_picture = m_patient + picture;
    const QString visit = record.value(2).section(u'|', 1, 1);
    m_window.firstPanel()->openRecord(static_cast<int>(type), record.value(0).toStdWString(), visit.toStdWString());
}

QList<QStringList> Tour::records(const wchar_t* call)
{
    return linesOf(m_window.context().session().callList(call, std::to_wstring(m_window.context().patient().number)));
}

// Replaces the provider by the beginning of a name. False if no search is due.
bool Tour::searchProvider(const QWidget& dialog)
{
    if (!std::exchange(m_searches, false))
        return false;
    m_picture = u"lookup"_s;
    for (QLineEdit* const field : dialog.findChildren<QLineEdit*>()) {
        if (field->accessibleName() != u"Provider"_s)
            continue;
        field->setFocus();
        field->selectAll();
        QKeyEvent letter(QEvent::KeyPress, Qt::Key_S, Qt::NoModifier, u"s"_s);
        QCoreApplication::sendEvent(field, &letter);
    }
    return true;
}

// Draws a dialog that was laid out, then those that it opens, and closes it.
void Tour::drawDialog()
{
    QWidget* const dialog = QApplication::activeModalWidget();
    if (!dialog || dialog != m_seen) {
        m_seen = dialog;
        return;
    }
    m_seen = nullptr;
    if (!m_names.contains(dialog)) {
        m_names.insert(dialog, m_picture);
        save(*dialog, m_picture);
    }
    if (searchProvider(*dialog)) {
        for (QAbstractButton* const button : dialog->findChildren<QAbstractButton*>()) {
            if (button->text() == u"..."_s)
                return QTimer::singleShot(0, button, &QAbstractButton::click);
        }
    }
    if (QAbstractButton* const next = buttonToFollow(*dialog)) {
        m_picture = m_names[dialog] + (next->text() == u"..."_s ? "-lookup" : "-editor");
        QTimer::singleShot(0, next, &QAbstractButton::click);
        return;
    }
    m_names.remove(dialog);
    pressKey(*dialog, Qt::Key_Escape);
}

// A button that opens a further dialog and has not been pressed yet; null if all have been.
QAbstractButton* Tour::buttonToFollow(const QWidget& dialog)
{
    for (QAbstractButton* const button : dialog.findChildren<QAbstractButton*>()) {
        const bool opens = button->text() == u"..."_s || button->text() == u"&Edit"_s;
        const QString key = dialog.windowTitle() + button->text();
        if (!opens || !button->isVisible() || !button->isEnabled() || m_followed.contains(key))
            continue;
        m_followed.insert(key);
        return button;
    }
    return nullptr;
}

void Tour::save(QWidget& widget, const QString& name)
{
    const QString path = m_folder + u'/' + name + u".png"_s;
    if (makePrivate(path) && widget.grab().save(path))
        ++m_pictures;
    else
        m_failed = true;
}

}
