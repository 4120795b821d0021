#include "host/desktop/ReadablePalette.h"

#include "toolkit/Contrast.h"

#include <QApplication>
#include <QEvent>

namespace health {

namespace {

// A disabled field still shows a value.
QColor disabledText(const QPalette& palette, QPalette::ColorRole role)
{
    const auto active = [&](QPalette::ColorRole of) { return palette.color(QPalette::Active, of); };
    const QColor half = mixed(active(role), active(QPalette::Window), 0.5);
    return readableOn(half, { active(QPalette::Base), active(QPalette::Window) });
}

}

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
    for (const auto role : { QPalette::Text, QPalette::WindowText, QPalette::ButtonText })
        palette.setColor(QPalette::Disabled, role, disabledText(palette, role));
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
