#pragma once

#include "host/framework/ClinicalContext.h"
#include "host/report/PrintedDocument.h"
#include "host/session/Transport.h"
#include "host/windows/PanelPages.h"
#include "host/windows/WindowOptions.h"

#include <QMainWindow>
#include <QPointer>

#include <memory>

class QLabel;

namespace health {

class SaveLine;
class TextSize;
class WaitBox;

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

private:
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
    void reopenEntry();
    ReportPeople people();
    void showReport(const Report& report);
    void showPages(Printout& printout);
    void makeHelpMenu();
    void showProgress(int percent, const QString& text);
    void printProgress(const QString& line);
    bool showWaiting(qint64 milliseconds);
    WaitBox& waitBox();
    void endWaiting();
    void closeLater();
    void updateTitle();
    bool asksToRetry(const QString& reason);
    void guarded(const std::function<void()>& work);
    Text userOfOptions();

    const WindowOptions m_options;
    std::unique_ptr<Transport> m_transport;
    ClinicalContext m_context;
    PanelPages* m_pages;
    QLabel* m_connectionLabel;
    QLabel* m_userLabel;
    SaveLine* m_saveLine;
    bool m_connected = false;
    std::size_t m_closedPanels = 0; // to be opened again for the user who signs on
    QAction* m_newPanel = nullptr;
    QAction* m_closePanel = nullptr;
    QAction* m_visitAction = nullptr;
    QPointer<WaitBox> m_waitBox; // while a call takes long
    bool m_closing = false; // closes when the running call has ended
    QString m_printedProgress; // the last line on standard error when unattended
    TextSize* m_textSize;
};

}
