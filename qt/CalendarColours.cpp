#include "qt/CalendarColours.h"

#include "toolkit/Inks.h"

namespace health {

CalendarColours::CalendarColours(const QPalette& palette)
    : day(colourOf(Ink::Words, palette))
    , refusedDay(fadedColourOf(Ink::Quiet, palette))
    , currentDay(palette.color(QPalette::Active, QPalette::HighlightedText))
    , fill(colourOf(Ink::Highlight, palette))
    , focus(colourOf(Ink::Focus, palette))
    , weekday(colourOf(Ink::Quiet, palette))
    , frame(colourOf(Ink::FieldFrame, palette))
{
}

}
