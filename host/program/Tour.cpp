#include "host/program/Tour.h"

#include "host/framework/DisplayText.h"
#include "host/session/Replies.h"
#include "host/windows/MainWindow.h"
#include "host/desktop/PrivateFile.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>

#include <cstdio>
#include <utility>

namespace health {

namespace {

// Story patients whose records show every form.
constexpr long Patients[] = { 1, 3, 5, 6, 2, 11, 13, 16 };
constexpr int EmergencyVisit = 8; // never listed by the panel
constexpr int WatchMilliseconds = 120;

void pressKey(QWidget& widget, Qt::Key key)
{
    for (const auto type : { QEvent::KeyPress, QEvent::KeyRelease }) {
        QKeyEvent event(type, key, Qt::NoModifier);
        QCoreApplication::sendEvent(&widget, &event);
    }
}

QString fileName(const QString& title)
{
    QString name;
    for (const QChar letter : title.toLower())
        name += letter.isLetterOrNumber() ? letter : QChar(u'-');
    return name;
}

}

Tour::Tour(MainWindow& window, const QString& folder)
    : m_window(window)
    , m_folder(folder)
{
    connect(&m_watch, &QTimer::timeout, this, &Tour::takeDialog);
}

int Tour::run()
{
    if (!QDir().mkpath(m_folder))
        return -1;
    m_watch.start(WatchMilliseconds);
    for (const long patient : Patients)
        visitPatient(patient);
    m_watch.stop();
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
    m_patient = QStringLiteral("patient-%1").arg(number);
    save(m_window, m_patient);
    openRows();
    openTypes();
    openEmergencyVisits(number);
    if (number == Patients[0])
        openLookup();
}

void Tour::openRows()
{
    auto* const grid = m_window.findChild<QAbstractItemView*>(QString(), Qt::FindChildrenRecursively);
    QSet<QString> seen;
    for (int row = 0; row < grid->model()->rowCount(); ++row) {
        const QString label = grid->model()->index(row, 0).data().toString();
        if (seen.contains(label))
            continue;
        seen.insert(label);
        m_prefix = m_patient + QStringLiteral("-edit-") + fileName(label);
        grid->setCurrentIndex(grid->model()->index(row, 0));
        pressKey(*grid, Qt::Key_Return);
    }
}

void Tour::openTypes()
{
    const auto* const types = m_window.findChild<QComboBox*>();
    for (int index = 0; index < types->count(); ++index) {
        m_prefix = m_patient + QStringLiteral("-add-") + fileName(types->itemText(index).trimmed());
        addRecord(index);
    }
}

// Adds a record of the type at a place of the list.
void Tour::addRecord(int type)
{
    auto* const types = m_window.findChild<QComboBox*>();
    types->setCurrentIndex(type);
    Q_EMIT types->activated(type);
    types->parentWidget()->findChild<QPushButton*>()->click();
}

// A search that finds several.
void Tour::openLookup()
{
    m_prefix = m_patient + QStringLiteral("-add-tx-contract-search");
    m_searches = true;
    addRecord(m_window.findChild<QComboBox*>()->findText(QStringLiteral("Treatment Contract")));
    m_searches = false;
}

// Types the beginning of a name over the provider, and presses the button beside it.
bool Tour::searchProvider(const QWidget& dialog)
{
    if (!std::exchange(m_searches, false))
        return false;
    m_prefix = QStringLiteral("lookup");
    for (QLineEdit* const field : dialog.findChildren<QLineEdit*>()) {
        if (field->accessibleName() != QStringLiteral("Provider"))
            continue;
        field->setFocus();
        field->selectAll();
        QKeyEvent letter(QEvent::KeyPress, Qt::Key_S, Qt::NoModifier, QStringLiteral("s"));
        QCoreApplication::sendEvent(field, &letter);
    }
    return true;
}

void Tour::openEmergencyVisits(long patient)
{
    const auto records = linesOf(m_window.context().session().callList(L"MEVVER GET", std::to_wstring(patient)));
    for (const QStringList& record : records) {
        m_prefix = m_patient + QStringLiteral("-edit-emergency-visit-") + record[0];
        const QString visit = record.value(2).section(u'|', 1, 1);
        m_window.firstPanel()->openRecord(EmergencyVisit, record[0].toStdWString(), visit.toStdWString());
    }
    if (records.isEmpty())
        return;
    m_prefix = m_patient + QStringLiteral("-add-emergency-visit");
    m_window.firstPanel()->openRecord(EmergencyVisit, {}, {});
}

// A dialog that has been open for one turn is taken, then those that it opens, then it is closed.
void Tour::takeDialog()
{
    QWidget* const dialog = QApplication::activeModalWidget();
    if (!dialog || dialog != m_seen) {
        m_seen = dialog;
        return;
    }
    m_seen = nullptr;
    if (!m_names.contains(dialog)) {
        m_names.insert(dialog, m_prefix);
        save(*dialog, m_prefix);
    }
    if (searchProvider(*dialog)) {
        for (QAbstractButton* const button : dialog->findChildren<QAbstractButton*>()) {
            if (button->text() == QStringLiteral("..."))
                return QTimer::singleShot(0, button, &QAbstractButton::click);
        }
    }
    if (QAbstractButton* const next = buttonToFollow(*dialog)) {
        m_prefix = m_names[dialog] + (next->text() == QStringLiteral("...") ? "-lookup" : "-editor");
        QTimer::singleShot(0, next, &QAbstractButton::click);
        return;
    }
    m_names.remove(dialog);
    pressKey(*dialog, Qt::Key_Escape);
}

// One that opens a further dialog and was not followed yet.
QAbstractButton* Tour::buttonToFollow(const QWidget& dialog)
{
    for (QAbstractButton* const button : dialog.findChildren<QAbstractButton*>()) {
        const bool opens = button->text() == QStringLiteral("...") || button->text() == QStringLiteral("&Edit");
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
    const QString path = m_folder + u'/' + name + QStringLiteral(".png");
    if (makePrivate(path) && widget.grab().save(path))
        ++m_pictures;
    else
        m_failed = true;
}

}
