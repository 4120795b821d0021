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
    bool m_entering = false; // a click gave the focus; its mouse press follows
    bool m_clickEnters = false; // the mouse button of that press is still down
};

}
