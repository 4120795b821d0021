#pragma once

#include <QFont>
#include <QObject>

namespace health {

// The size of all text, as a factor of the desktop's, and with it the margins, bars and boxes that no style lets follow
// the font. Back to the desktop's when it goes.
class TextSize : public QObject {
public:
    explicit TextSize(QObject* parent);
    ~TextSize() override;

    double factor() const { return m_factor; }
    // Within what can be read and still fits a screen.
    void setFactor(double factor);

private:
    const QFont m_natural;
    double m_factor = 1;
};

}
