#pragma once

#include <QScrollArea>

namespace health {

// The fields of a form. It scrolls where the screen is too low; the scroll bar stands in the form's right margin, so
// that nothing moves when it appears.
class BodyArea : public QScrollArea {
public:
    // Takes the layout.
    explicit BodyArea(QLayout* fields);

    int heightFor(int width) const;
    // Narrower, it scrolls horizontally.
    int leastWidth() const;
    // The fields have changed: shows or hides the scroll bars.
    void placeBars();
    // Scrolls the widget into view, and what is below it as far as there is room.
    void show(QWidget& widget, const QWidget* below);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    int barWidth() const;

    QWidget* m_body;
};

}
