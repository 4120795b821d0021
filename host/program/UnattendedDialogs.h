#pragma once

#include <QObject>

namespace health {

// Answers every dialog at once as Escape would, and prints what it said on standard error: nobody sits in front of the
// program. To be installed on the application.
class UnattendedDialogs : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    // True when a dialog has come up.
    bool hasSeenOne() const { return m_seen; }

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool m_seen = false;
};

}
