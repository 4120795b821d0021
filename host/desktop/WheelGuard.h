#pragma once

#include <QObject>

namespace health {

// Keeps the mouse wheel from changing a field without the focus: over a list, number or date field it scrolls the
// field's surroundings instead. An event filter for the application.
class WheelGuard : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    bool eventFilter(QObject* watched, QEvent* event) override;
};

}
