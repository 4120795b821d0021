#pragma once

#include "host/framework/ClinicalContext.h"
#include "host/framework/SeenPatients.h"
#include "host/session/Transport.h"
#include "host/windows/PanelPages.h"
#include "host/windows/WindowOptions.h"

#include <QMainWindow>

#include <memory>

namespace health {

class CallWatch;
class EmergencyVisits;
class PanelMenus;
class PatientBanner;
class SignLabel;
class StatusLine;
class TextSize;

// The host's window: patient banner, up to four panels side by side, menus, status line.
class MainWindow : public QMainWindow {
    Q_OBJECT
public:
    explicit MainWindow(const WindowOptions& options);
    ~MainWindow() override;

    // Signs on, opens a panel and selects the patient of the options. Throws Failure; false if no user was chosen.
    bool start();

    ClinicalContext& context() { return m_context; }

    // The rows of the first panel's grid as lines, their cells separated by tabs.
    QString gridText() const { return m_pages->gridText(); }
    ComponentInstance* firstPanel() const { return m_pages->first(); }
    // Why the panel could not be loaded; empty if it was.
    QString panelFailure() const { return m_pages->failure(); }

protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    QWidget* makeCentre(PatientBanner& banner);
    void makeStatusBar();
    void layOutEdges();
    void makeFileMenu();
    void makeViewMenu();
    ClinicalContext::Prompts prompts();
    void connectContext();
    void showConnection(bool connected);
    void updatePanelActions();
    void changeUser(const Text& user);
    void signOnAgain(const Text& user);
    void reopenPanels();
    void showUser();
    void choosePatient();
    void chooseVisit();
    void chooseUser();
    void showEmergencyVisits();
    void reopenEntry();
    void makeHelpMenu();
    void closeLater();
    void updateTitle();
    bool asksToRetry(const QString& reason);
    void guarded(const std::function<void()>& work);
    Text userOfOptions();

    const WindowOptions m_options;
    std::unique_ptr<Transport> m_transport;
    ClinicalContext m_context;
    CallWatch* m_calls;
    PanelPages* m_pages;
    PanelMenus* m_panelMenus;
    SignLabel* m_userLabel = nullptr;
    StatusLine* m_statusLine;
    bool m_connected = false;
    std::size_t m_closedPanels = 0; // to be opened again for the user who signs on
    QAction* m_newPanel = nullptr;
    QAction* m_closePanel = nullptr;
    QAction* m_visitAction = nullptr;
    QAction* m_emergencyAction = nullptr;
    EmergencyVisits* m_emergencyVisits = nullptr; // once it was wanted
    SeenPatients m_seenPatients;
    bool m_closing = false; // closes when the running call has ended
    TextSize* m_textSize;
};

}
