#pragma once

#include <QObject>

namespace health {

// Closes every dialog as Escape would, and prints its text on standard error. An event filter for an application that
// runs without a user.
class UnattendedDialogs : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    // True if a dialog was shown.
    bool hasSeenOne() const { return m_seen; }

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool m_seen = false;
};

}
