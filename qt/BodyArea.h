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
    // Scrolls the widget into view, and what is below it as far as there is room.
    void show(QWidget& widget, const QWidget* below);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

private:
    void placeBar();

    QWidget* m_body;
};

}
