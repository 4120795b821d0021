#pragma once

#include <QObject>

namespace health {

// Keeps the mouse wheel from changing a field that the user has not chosen: over a list, number or date field without
// the focus it scrolls what is around the field. To be installed on the application.
class WheelGuard : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    bool eventFilter(QObject* watched, QEvent* event) override;
};

}
