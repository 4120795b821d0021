#pragma once

#include "platform/controls/Control.h"

#include <QRect>

class QWidget;

namespace health {

// Converts between twips and pixels. A twip is 1/1440 inch at the forms' design font size; a larger user font enlarges
// everything in proportion.
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
