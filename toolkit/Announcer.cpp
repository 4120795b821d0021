#include "toolkit/Announcer.h"

#include <QAccessibleWidget>
#include <QApplication>
#include <QWidget>

namespace health {

namespace {

// An empty child of a window. Screen readers speak a notification when it appears; they ignore the alerts of widgets
// that are already there.
class Announcer final : public QWidget {
public:
    using QWidget::QWidget;

    static Announcer& of(QWidget& window)
    {
        for (QObject* const child : window.children()) {
            if (auto* const announcer = dynamic_cast<Announcer*>(child))
                return *announcer;
        }
        return *new Announcer(&window);
    }
};

// A notification in the application rather than in its window: otherwise the window's name and heading would be spoken
// each time.
class Notification final : public QAccessibleWidget {
public:
    explicit Notification(QWidget& announcer)
        : QAccessibleWidget(&announcer, QAccessible::Notification)
    {
    }
    QAccessibleInterface* parent() const override { return QAccessible::queryAccessibleInterface(qApp); }
};

QAccessibleInterface* makeInterface(const QString&, QObject* object)
{
    auto* const announcer = dynamic_cast<Announcer*>(object);
    return announcer ? new Notification(*announcer) : nullptr;
}

}

void announce(QWidget& about, const QString& text)
{
    if (!QAccessible::isActive() || text.isEmpty())
        return;
    static const bool isInstalled = (QAccessible::installFactory(makeInterface), true);
    Q_UNUSED(isInstalled)
    Announcer& announcer = Announcer::of(*about.window());
    announcer.setFixedSize(1, 1);
    announcer.setAttribute(Qt::WA_TransparentForMouseEvents);
    announcer.hide();
    announcer.setAccessibleName(text);
    announcer.show();
}

}
