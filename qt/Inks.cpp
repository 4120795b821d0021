#include "qt/Inks.h"

#include "qt/Tones.h"

namespace health {

QColor colourOf(Ink ink, const QPalette& palette)
{
    static constexpr Tone tones[] = { Tone::Words, Tone::Quiet, Tone::Visit, Tone::Caution, Tone::Error, Tone::Good,
        Tone::FieldFrame, Tone::Hairline, Tone::HeaderStrip };
    return colourOf(tones[static_cast<int>(ink)], palette);
}

}
