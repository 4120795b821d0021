#include "tests/agreement/Hands.h"

#include <QApplication>
#include <QSplitter>
#include <QTest>
#include <QWheelEvent>
#include <QWindow>

namespace health::test {

QWidget* topWindow()
{
    if (QWidget* const popup = QApplication::activePopupWidget())
        return popup;
    if (QWidget* const modal = QApplication::activeModalWidget())
        return modal;
    for (QWidget* const window : QApplication::topLevelWidgets()) {
        if (qobject_cast<QSplitter*>(window) && window->isVisible())
            return window;
    }
    return nullptr;
}

namespace {

// The widgets that the mouse can reach.
QList<QWidget*> targets(const QWidget& window)
{
    QList<QWidget*> widgets;
    for (QWidget* const widget : window.findChildren<QWidget*>()) {
        if (widget->isVisible() && widget->window() == &window && !widget->size().isEmpty())
            widgets.append(widget);
    }
    return widgets;
}

}

void pressKeys(const QString& keys)
{
    const QKeyCombination combination = QKeySequence(keys)[0];
    // Alt alone closes a menu; the next event of QTest::keyClick would then have no window.
    const bool inMenu = QApplication::activePopupWidget();
    if (QWindow* const window = topWindow()->windowHandle())
        QTest::keyClick(window, combination.key(), inMenu ? Qt::NoModifier : combination.keyboardModifiers());
}

void typeText(const QString& text)
{
    const QWidget* const top = topWindow();
    for (const QChar letter : text) {
        if (topWindow() == top) // a new window ends the typing
            QTest::sendKeyEvent(QTest::Click, top->windowHandle(), Qt::Key_unknown, QString(letter), Qt::NoModifier);
    }
}

void useMouse(const QStringList& words)
{
    QWidget& top = *topWindow();
    QWindow* const window = top.windowHandle();
    const QList<QWidget*> widgets = targets(top);
    if (widgets.isEmpty() || !window)
        return;
    const auto pointIn = [&](int index, int x, int y) {
        const QWidget* const widget = widgets[index % widgets.size()];
        return widget->mapTo(&top, QPoint(widget->width() * x / 100, widget->height() * y / 100));
    };
    const QPoint at = pointIn(words[1].toInt(), words[2].toInt(), words[3].toInt());
    if (words[0] == u"click") {
        QTest::mouseClick(window, Qt::LeftButton, {}, at);
    } else if (words[0] == u"double") {
        QTest::mouseDClick(window, Qt::LeftButton, {}, at);
    } else if (words[0] == u"right") {
        QTest::mouseClick(window, Qt::RightButton, {}, at);
    } else if (words[0] == u"drag") {
        const QPoint to = pointIn(words[4].toInt(), 50, 50); // before the press, which may remove widgets
        QTest::mousePress(window, Qt::LeftButton, {}, at);
        if (topWindow() == &top)
            QTest::mouseRelease(window, Qt::LeftButton, {}, to);
    } else if (QWidget* const under = top.childAt(at)) {
        QWheelEvent event(under->mapFrom(&top, at), top.mapToGlobal(at), {}, QPoint(0, -120), Qt::NoButton,
            Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(under, &event);
    }
}

}
