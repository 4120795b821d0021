#include "host/desktop/ReadablePalette.h"

#include "toolkit/Contrast.h"

#include <QApplication>
#include <QEvent>

namespace health {

QPalette readable(QPalette palette)
{
    for (const auto group : { QPalette::Active, QPalette::Inactive }) {
        const QColor base = palette.color(group, QPalette::Base);
        const QColor hint = palette.color(group, QPalette::PlaceholderText);
        palette.setColor(group, QPalette::PlaceholderText,
            readableOn(mixed(hint, base, hint.alphaF()), { base, palette.color(group, QPalette::Window) }));
        palette.setColor(group, QPalette::Highlight,
            readableOn(palette.color(group, QPalette::Highlight), { palette.color(group, QPalette::HighlightedText) }));
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
