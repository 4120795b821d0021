#pragma once

#include "toolkit/Inks.h"

#include <QLabel>

namespace health {

enum class Sign {
    None,
    Bar, // of the current visit
    Caution,
    Calendar,
    Check,
    Disconnected,
};

// Draws a sign into a square, in one colour.
void drawSign(QPainter& painter, const QRect& place, Sign sign, const QColor& colour);

// A plain text, selectable, with a sign before it. Its hint is one line; in less room it wraps.
class SignLabel : public QLabel {
public:
    SignLabel();

    void say(const QString& text, Sign sign, Ink signInk, Ink textInk);
    void say(const QString& text, Sign sign, Ink ink) { say(text, sign, ink, ink); }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void applyInk();
    void makeRoom();

    Sign m_sign = Sign::None;
    Ink m_signInk = Ink::Words;
    Ink m_textInk = Ink::Words;
};

}
