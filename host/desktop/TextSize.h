#pragma once

#include <QFont>
#include <QObject>

namespace health {

// Scales all text by a factor of the desktop's size, and with it the margins, bars and boxes that styles do not adapt
// to the font. Its destructor restores the desktop's size.
class TextSize : public QObject {
public:
    explicit TextSize(QObject* parent);
    ~TextSize() override;

    double factor() const { return m_factor; }
    // Clamped to sizes that are readable and still fit a screen.
    void setFactor(double factor);

private:
    const QFont m_natural;
    double m_factor = 1;
};

}
