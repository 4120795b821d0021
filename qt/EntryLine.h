#pragma once

#include <QLineEdit>

namespace health {

// An access key that belongs to nothing here: it must not leave its letter in a text.
bool isStrayAccessKey(const QKeyEvent& event);

// The line of a text box or a date. A click that brings the focus into it selects its text, as every other way into it
// does; in the line that has the focus a click sets the caret, and dragging selects a part.
class EntryLine : public QLineEdit {
public:
    explicit EntryLine(const QString& text = {}, QWidget* parent = nullptr);

    // Makes the line as wide as a text of these letters needs it; none: as wide as its neighbours.
    void setSample(const QString& letters);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    QSize sizeOfSample() const;

    QString m_sample;
    bool m_entering = false; // a click has given the focus; the line gets the press itself later
    bool m_clickEnters = false; // the button is down
};

}
