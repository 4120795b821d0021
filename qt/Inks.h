#pragma once

#include <QColor>
#include <QPalette>

namespace health {

// The colours of a form's texts and lines; see qt/Tones.h.
enum class Ink {
    Words,
    Quiet,
    Visit,
    Caution,
    Error,
    Good,
    FieldFrame,
    Hairline,
    HeaderStrip,
};

QColor colourOf(Ink ink, const QPalette& palette);

}
