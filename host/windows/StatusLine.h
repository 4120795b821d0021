#pragma once

#include <QAction>
#include <QWidget>

class QLabel;
class QPushButton;

namespace health {

class HostSession;

// In the status line: what was saved and when, and the entry that was discarded, with a button that brings it back.
class SaveLine : public QWidget {
    Q_OBJECT
public:
    // The session must outlive the line.
    explicit SaveLine(HostSession& session);

    // For a menu: the same as the button, enabled while there is an entry to bring back.
    QAction* undoAction() { return m_undo; }

Q_SIGNALS:
    // The user brings the entry back.
    void entryWanted();

private:
    void showSaved(const QString& what);
    void showOffer(const QString& offer);

    QString m_offer; // empty without an offer
    QAction* m_undo;
    QLabel* m_text;
    QPushButton* m_button;
};

}
