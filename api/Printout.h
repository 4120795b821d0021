// What a panel prints: PrintPreview::previewPages. The host shows the pages, prints them or saves them as PDF, and adds
// what each page says about the patient, the user and the date.
#pragma once

#include "api/Text.h"

#include <vector>

class QPainter;

namespace health {

// The unit of all lengths of a printout: dots, of which this many make an inch whatever the printer's resolution. Sets
// the size of fonts too: QFont::setPixelSize, not points.
inline constexpr int PrintoutDotsPerInch = 288;

// Pages drawn by a panel, in black on white. Holds copies of all it draws: the list may be loaded again meanwhile.
class Printout {
public:
    virtual ~Printout() = default;

    // The title of the preview and of each page.
    virtual Text title() const = 0;
    // Lines below the title on each page, such as "3 of 12 records, filtered by 2026".
    virtual std::vector<Text> remarks() const { return {}; }
    // The contents as lines ended by LF, for screen readers.
    virtual Text plainText() const = 0;

    // Divides the contents into pages whose contents have at most this size, and returns the number of pages, at least
    // 1. Called again when the paper changes.
    virtual int layOut(int width, int height) = 0;
    // Draws a page, counted from 0, of the latest layOut(); (0, 0) is the upper left corner of its contents.
    virtual void draw(QPainter& painter, int page) const = 0;
};

}
