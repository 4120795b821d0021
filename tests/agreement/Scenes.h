// The scenes that the agreement driver plays: each form, the lookups, two panels side by side.
#pragma once

#include "tests/agreement/Agreement.h"
#include "tests/agreement/FlakySession.h"
#include "tests/support/RealServer.h"
#include "tests/support/ScriptedHost.h"

#include <QApplication>
#include <QDialog>
#include <QEventLoop>
#include <QMenu>
#include <QMessageBox>
#include <QScopedValueRollback>

#include <random>
#include <set>

namespace health::test {

// A desktop that knows when the user cannot act: while a form processes pending events, or a box or form is closed and
// its caller has not continued yet.
class DrivenDesktop : public QtDesktop {
public:
    BoxAnswer messageBox(TextView text, int style, TextView title) override
    {
        const QScopedValueRollback deeper(m_shown, m_shown + 1);
        return QtDesktop::messageBox(text, style, title);
    }
    void showModal(Form& form) override
    {
        const QScopedValueRollback deeper(m_shown, m_shown + 1);
        QtDesktop::showModal(form);
    }
    void processPendingEvents() override
    {
        const QScopedValueRollback busy(m_busy, true);
        QtDesktop::processPendingEvents();
    }
    bool isBusy() const
    {
        int visible = 0;
        for (const QWidget* const window : QApplication::topLevelWidgets()) {
            visible += qobject_cast<const QDialog*>(window) && window->isVisible();
            // The choice in a closed menu has not taken effect yet; but a box may have opened over a menu.
            const bool closedMenu = qobject_cast<const QMenu*>(window) && !window->isVisible()
                && !window->testAttribute(Qt::WA_DeleteOnClose);
            if (closedMenu && !qobject_cast<QMessageBox*>(QApplication::activeModalWidget()))
                return true;
        }
        return m_busy || visible != m_shown;
    }

private:
    int m_shown = 0; // nested boxes and forms
    bool m_busy = false;
};

struct Episode {
    QStringList actions; // each with its target
    QString failure; // empty: all agreed
};

class Scenes : public QObject {
public:
    Scenes();
    ~Scenes() override;

    // Plays one scene with the actions of this seed.
    Episode play(unsigned seed);
    // Saved records that showed the same values when they were opened again.
    int savesSeen() const { return m_savesSeen; }

private:
    struct Scene;
    static const std::vector<Scene>& all();
    template<typename Editor>
    void edit();
    void lookUp();
    void lookUpVaccines();
    void showPanels();
    void forPatient(long number);
    Text lastRecord(TextView list);

    void post(int milliseconds = 0);
    void tick();
    bool canAct() const;
    QString check();
    QString checkSaved(const FormDialog& dialog);
    QString checkRead();
    void noteRows();
    void readDetails();
    QStringList rowsOfPanels() const;
    void endScene();
    void act();
    int random(qsizetype count) { return static_cast<int>(m_random() % static_cast<unsigned>(count)); }

    QTemporaryDir m_folder;
    RealSession m_real { m_folder.filePath("data") };
    RealSession m_registrar { m_folder.filePath("data"), L"ROLLINS,COLE" }; // holds the registry's key
    ScriptedHost m_host;
    DrivenDesktop m_desktop;
    std::shared_ptr<FlakySession> m_session;
    modShared m_shared { m_desktop };
    Text m_visit;
    Text m_record; // that the scene edits

    std::mt19937 m_random;
    int m_budget = 0; // of actions
    Episode m_episode;
    const QWidget* m_actedOn = nullptr; // during an action
    bool m_posted = false;
    bool m_ending = false;
    int m_waits = 0;
    QEventLoop* m_panelLoop = nullptr;
    std::vector<std::pair<kalmevRepHistCtrl*, const PanelView*>> m_panels;
    const FormDialog* m_lastDialog = nullptr;
    const Control* m_lastActive = nullptr;
    QString m_lastVerb;
    int m_marks = 0; // fields whose selection a double click or dragging may have changed
    Text m_call; // the call that saves the record of the scene
    QStringList m_saved; // the values of the form at the save
    std::set<Text> m_seenSelected; // the records selected in the panels' lists at the last check
    QString m_wrongDelete;
    bool m_finds = false;
    bool m_reads = false; // the details
    std::optional<QStringList> m_rowsBefore; // the panels' rows before an action in the details
    int m_calls = 0; // of the server, since then
    bool m_loadFailed = false;
    bool m_verifying = false;
    int m_savesSeen = 0;
};

}
