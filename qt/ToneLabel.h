#pragma once

#include "platform/Explanation.h"

#include <QLabel>

namespace health {

// A plain text in the colour of its tone, with a symbol where the tone has one. It wraps; its hint is one line, and it
// claims no width that its neighbours need. Hidden while it is empty.
class ToneLabel : public QLabel {
public:
    explicit ToneLabel(double size = 1);

    // Does nothing if neither differs.
    void say(const QString& text, Tone tone);
    // Keeps one line's height while it is empty.
    void keepLine();
    // Keeps the width of so many characters, from showRoom() on.
    void keepCharacters(int characters);
    // The label has its place in a window.
    void showRoom() { setVisible(m_keepsLine || m_kept > 0 || !text().isEmpty()); }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    int symbolWidth() const;
    Qt::TextFlag wrapping(int room) const;
    int textWidth() const;

    Tone m_tone = Tone::Quiet;
    bool m_keepsLine = false;
    int m_kept = 0; // pixels
};

}
