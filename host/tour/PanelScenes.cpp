#include "host/tour/PanelScenes.h"

#include "host/framework/DisplayText.h"
#include "host/session/Replies.h"
#include "host/windows/MainWindow.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QTableView>
#include <QThread>

using namespace Qt::StringLiterals;

namespace health {

namespace {

constexpr long NoPatient = 0;
constexpr long Mother = 1;
constexpr long Infant = 5;
constexpr long Aged = 10;
constexpr long WithoutRecords = 14;

// Lets timers run out that wait for the user's pauses.
void settle()
{
    constexpr unsigned long pause = 20; // milliseconds
    for (int turn = 0; turn < 20; ++turn) {
        QApplication::processEvents();
        QThread::msleep(pause);
    }
}

}

void PanelScenes::run()
{
    m_window.resize(m_window.width(), m_window.height() * 5 / 4); // room for the whole details
    showDetails(Mother, u"Asthma Status"_s, u"panel-asthma"_s);
    showDetails(Mother, u"Reproductive"_s, u"panel-reproductive"_s);
    showDetails(Mother, u"Tx Contract"_s, u"panel-contract"_s);
    showDetails(Mother, u"Refusal"_s, u"panel-refusal"_s);
    showDetails(Aged, u"Functional Status"_s, u"panel-functional"_s);
    showDetails(Infant, u"Infant Feeding"_s, u"panel-feeding"_s);
    showDetails(Infant, u"Birth Measurements"_s, u"panel-birth"_s);
    search(Mother, u"her"_s, u"panel-find"_s);
    showPatient(WithoutRecords, u"panel-no-records"_s);
    showPatient(NoPatient, u"panel-no-patient"_s);
}

void PanelScenes::showPatient(long patient, const QString& name)
{
    m_window.context().selectPatient(patient);
    if (patient != NoPatient) {
        const auto visits = linesOf(m_window.context().session().callList(L"MEVHOST VISITS", std::to_wstring(patient)));
        if (!visits.isEmpty())
            m_window.context().selectVisit(
                { visits[0][0].toLong(), visits[0].value(1), displayName(visits[0].value(2)) });
    }
    settle();
    if (!name.isEmpty())
        m_save(name);
}

void PanelScenes::showDetails(long patient, const QString& kind, const QString& name)
{
    showPatient(patient, {});
    QTableView* const rows = list();
    for (int row = 0; rows && row < rows->model()->rowCount(); ++row) {
        if (rows->model()->index(row, 0).data().toString() != kind)
            continue;
        rows->setFocus();
        rows->setCurrentIndex(rows->model()->index(row, 0));
        break;
    }
    settle();
    m_save(name);
}

void PanelScenes::search(long patient, const QString& text, const QString& name)
{
    showPatient(patient, {});
    QAction* const find = action(u"Find Records"_s);
    if (!find)
        return;
    find->trigger();
    QApplication::processEvents();
    QWidget* const field = m_window.focusWidget();
    for (const QChar letter : text) {
        QKeyEvent press(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, letter);
        QCoreApplication::sendEvent(field, &press);
    }
    settle();
    m_save(name);
    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QCoreApplication::sendEvent(field, &escape);
}

QTableView* PanelScenes::list() const
{
    for (QTableView* const table : m_window.findChildren<QTableView*>()) {
        if (table->accessibleName() == u"Personal health records")
            return table;
    }
    return nullptr;
}

QAction* PanelScenes::action(const QString& caption) const
{
    for (QAction* const action : m_window.firstPanel()->widget()->actions()) {
        if (action->text() == caption)
            return action;
    }
    return nullptr;
}

}
