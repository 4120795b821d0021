#pragma once

#include <QAction>
#include <QWidget>

class QPushButton;

namespace health {

class HostSession;
class SignLabel;

// The text of the status line: what the panel does or cannot do, else since when the server is not connected, else what
// was saved and when, or the entry that was discarded, with a button that brings it back.
class StatusLine : public QWidget {
    Q_OBJECT
public:
    // The session must outlive the line.
    explicit StatusLine(HostSession& session);

    // For a menu: the same as the button, enabled while there is an entry to bring back.
    QAction* undoAction() { return m_undo; }

    // Another patient is selected: what was saved before belongs to the former one.
    void forgetSaved();

Q_SIGNALS:
    // The user brings the entry back.
    void entryWanted();

private:
    void showSaved(const QString& what);
    void showOffer(const QString& offer);
    void showConnection(bool connected);
    void refresh();

    QString m_status; // STATUS of the panel
    QString m_away; // empty while the server is connected
    QString m_saved;
    QString m_offer; // empty without an offer
    QAction* m_undo;
    SignLabel* m_text;
    QPushButton* m_button;
};

}
