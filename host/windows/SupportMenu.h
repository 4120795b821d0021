#pragma once

#include <QObject>
#include <QPointer>

class QDialog;
class QMainWindow;
class QMenu;

namespace health {

class DisturbedTransport;
class HostSession;

// The items of the Help menu for those who look after the program, and their windows.
class SupportMenu : public QObject {
    Q_OBJECT
public:
    // Adds the items to the menu. The session must outlive the window, which owns the object. A laboratory has a
    // transport that it may disturb; the window's status line then shows its state.
    SupportMenu(QMenu& help, HostSession& session, DisturbedTransport* laboratory, QMainWindow& window);

private:
    void addLaboratory(QMenu& help, DisturbedTransport& transport);
    void showJournal();

    HostSession& m_session;
    QMainWindow& m_window;
    QPointer<QDialog> m_journal;
    QPointer<QDialog> m_laboratory;
};

}
