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

void useMouse(const QString& verb, QPoint from, QPoint to)
{
    QWidget& top = *topWindow();
    QWindow* const window = top.windowHandle();
    QWidget* const under = top.childAt(from);
    if (!window)
        return;
    if (verb == u"click" || verb == u"right") {
        QTest::mouseClick(window, verb == u"click" ? Qt::LeftButton : Qt::RightButton, {}, from);
    } else if (verb == u"double") {
        QTest::mouseDClick(window, Qt::LeftButton, {}, from);
    } else if (verb == u"drag") {
        QTest::mousePress(window, Qt::LeftButton, {}, from);
        if (topWindow() == &top)
            QTest::mouseRelease(window, Qt::LeftButton, {}, to);
    } else if (under) {
        QWheelEvent event(under->mapFrom(&top, from), top.mapToGlobal(from), {}, QPoint(0, -120), Qt::NoButton,
            Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(under, &event);
    }
}

}
