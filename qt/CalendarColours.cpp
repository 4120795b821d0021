#include "qt/CalendarColours.h"

#include "qt/Tones.h"

namespace health {

CalendarColours::CalendarColours(const QPalette& palette)
    : day(colourOf(Tone::Words, palette))
    , refusedDay(fadedColourOf(Tone::Quiet, palette))
    , currentDay(palette.color(QPalette::Active, QPalette::HighlightedText))
    , fill(colourOf(Tone::Highlight, palette))
    , focus(colourOf(Tone::Focus, palette))
    , weekday(colourOf(Tone::Quiet, palette))
    , frame(colourOf(Tone::FieldFrame, palette))
{
}

}
