#pragma once

#include <QObject>

namespace health {

// Event filter for a field or for the whole application: over a list, number or date field without the focus the mouse
// wheel scrolls the surrounding area instead of changing a clinical value unseen.
class WheelGuard : public QObject {
public:
    using QObject::QObject;

    bool eventFilter(QObject* watched, QEvent* event) override;
};

}
