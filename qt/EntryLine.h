#pragma once

#include <QLineEdit>
namespace health {

// An access key that no widget uses; it must not insert its letter into a text.
bool isStrayAccessKey(const QKeyEvent& event);

// The line of a text box or a date. The click that gives it the focus selects its text, as Tab does; later clicks set
// the caret, and dragging selects a part.
class EntryLine : public QLineEdit {
public:
    explicit EntryLine(const QString& text = {}, QWidget* parent = nullptr);

    // Makes the line as wide as these letters; if empty, it expands like its neighbours.
    void setSample(const QString& letters);

    // Puts a button or a pair of arrows inside the line, at its right end. The line owns it.
    void setInside(QWidget& widget);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    QSize sizeOfSample() const;
    void makeRoomInside();

    QString m_sample;
    QWidget* m_inside = nullptr;
    bool m_entering = false; // a click gave the focus; its mouse press follows
    bool m_clickEnters = false; // the mouse button of that press is still down
};

}
