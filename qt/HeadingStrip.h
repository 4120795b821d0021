#pragma once

#include "platform/Explanation.h"

#include <QLabel>

namespace health {

// The strip at the top of a form: whose record it is, and of which visit. With a warning, a red banner instead. Its
// text is what screen readers speak. Hidden while the form has no heading.
class HeadingStrip : public QLabel {
public:
    HeadingStrip();

    // Does nothing if the heading does not differ.
    void show(const FormHeading& heading);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    class Parts;
    int lineHeight() const;
    int padding() const;

    FormHeading m_heading;
};

}
