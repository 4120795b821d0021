#pragma once

#include "host/ClinicalContext.h"
#include "host/Options.h"
#include "host/ProcessTransport.h"

#include <QMainWindow>
#include <QPointer>

#include <vector>

class QLabel;
class QProgressDialog;
class QSplitter;

namespace health {

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
    QString gridText() const;

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    struct Panel;

    void makeMenus();
    void addPanel();
    void closePanel();
    void dropPanels();
    void choosePatient();
    void chooseVisit();
    void chooseUser();
    void showReport(const QString& report, const QString& title);
    void showProgress(int percent, const QString& text);
    void changeTextSize(double factor);
    void updateTitle();
    bool askAgain(const QString& reason);
    void guarded(const std::function<void()>& work);
    Text userOfOptions();

    Options m_options;
    ProcessTransport m_transport;
    ClinicalContext m_context;
    QSplitter* m_pages;
    QLabel* m_userLabel;
    QAction* m_newPanel = nullptr;
    QAction* m_closePanel = nullptr;
    QAction* m_visitAction = nullptr;
    QPointer<QProgressDialog> m_progress;
    double m_basePointSize;
    double m_textSize = 1;
    std::vector<std::unique_ptr<Panel>> m_panels;
};

}
