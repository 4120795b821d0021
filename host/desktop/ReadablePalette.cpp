#include "host/desktop/ReadablePalette.h"

#include "toolkit/Colours.h"
#include "toolkit/Contrast.h"

#include <QApplication>
#include <QEvent>

namespace health {

QPalette readable(QPalette palette)
{
    for (const auto group : { QPalette::Active, QPalette::Inactive }) {
        const auto number = [&](QPalette::ColorRole role) { return colourNumber(palette.color(group, role)); };
        const Colour base = number(QPalette::Base);
        const QColor hint = palette.color(group, QPalette::PlaceholderText);
        palette.setColor(group, QPalette::PlaceholderText,
            colourOf(readableOn(mixed(colourNumber(hint), base, hint.alphaF()), { base, number(QPalette::Window) })));
        palette.setColor(group, QPalette::Highlight,
            colourOf(readableOn(number(QPalette::Highlight), { number(QPalette::HighlightedText) })));
    }
    return palette;
}

ReadablePalette::ReadablePalette(QObject* parent)
    : QObject(parent)
{
    apply();
    QCoreApplication::instance()->installEventFilter(this);
}

bool ReadablePalette::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == QCoreApplication::instance() && event->type() == QEvent::ApplicationPaletteChange)
        apply();
    return false;
}

void ReadablePalette::apply()
{
    const QPalette palette = readable(QApplication::palette());
    if (palette != QApplication::palette())
        QApplication::setPalette(palette);
}

}
