#pragma once

#include "host/framework/ClinicalContext.h"
#include "host/program/Options.h"
#include "host/session/Transport.h"
#include "host/windows/PanelPages.h"

#include <QMainWindow>
#include <QPointer>

#include <memory>

class QLabel;

namespace health {

class TextSize;
class WaitBox;

// The host's window: patient banner, up to four panels side by side, menus, status line.
class MainWindow : public QMainWindow {
    Q_OBJECT
public:
    explicit MainWindow(const Options& options);
    ~MainWindow() override;

    // Signs on, opens a panel, selects the patient of the options. Throws Failure; false when nobody signed on.
    bool start();

    ClinicalContext& context() { return m_context; }

    // The rows of the first panel's grid as text, texts parted by tabs.
    QString gridText() const { return m_pages->gridText(); }
    ComponentInstance* firstPanel() const { return m_pages->first(); }
    // Why the panel could not be loaded; empty when it could.
    QString panelFailure() const { return m_pages->failure(); }

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void makeFileMenu();
    void makeViewMenu();
    void connectContext();
    void showConnection(bool connected);
    void updatePanelActions();
    void changeUser(const Text& user);
    void signOnAgain(const Text& user);
    void addWantedPanels();
    void showUser();
    void choosePatient();
    void chooseVisit();
    void chooseUser();
    void showReport(const Report& report);
    void makeHelpMenu();
    void showProgress(int percent, const QString& text);
    void tellProgress(const QString& line);
    bool showWaiting(qint64 milliseconds);
    WaitBox& waitBox();
    void endWaiting();
    void closeLater();
    void updateTitle();
    bool askAgain(const QString& reason);
    void guarded(const std::function<void()>& work);
    Text userOfOptions();

    Options m_options;
    std::unique_ptr<Transport> m_transport;
    ClinicalContext m_context;
    PanelPages* m_pages;
    QLabel* m_connectionLabel;
    QLabel* m_userLabel;
    bool m_connected = false;
    std::size_t m_wantedPanels = 0; // taken off, to be opened again for the user who signs on
    QAction* m_newPanel = nullptr;
    QAction* m_closePanel = nullptr;
    QAction* m_visitAction = nullptr;
    QPointer<WaitBox> m_waitBox; // while a call takes long
    bool m_closing = false; // as soon as the call that runs is over
    QString m_toldProgress; // the last line on standard error where nobody sits in front
    TextSize* m_textSize;
};

}
