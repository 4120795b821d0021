#pragma once

#include "platform/controls/Control.h"

#include <QRect>

class QWidget;

namespace health {

// Turns the logic's twips into pixels. A twip is 1/1440 inch at the font size that the forms were measured with;
// with a larger font of the user everything grows in step.
class Scale {
public:
    explicit Scale(const QWidget& widget);

    int pixels(int twips) const;
    int twips(int pixels) const;
    QRect pixels(const Place& place) const;

private:
    double m_pixelsPerTwip;
};

}
