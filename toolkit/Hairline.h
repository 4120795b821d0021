#pragma once

#include "toolkit/Inks.h"
#include "toolkit/Measures.h"

#include <QPainter>
#include <QWidget>

namespace health {

// A thin line between parts of a form.
class Hairline : public QWidget {
public:
    Hairline() { setFixedHeight(Measures(*this).hairline()); }

protected:
    void paintEvent(QPaintEvent*) override { QPainter(this).fillRect(rect(), colourOf(Ink::Hairline, palette())); }
};

}
