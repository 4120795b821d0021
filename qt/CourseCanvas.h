#pragma once

#include "qt/course/CoursePicture.h"

#include <QPixmap>
#include <QWidget>

namespace health {

class CourseView;

// Draws the picture of a CourseView. The user reads its values with the pointer or with the arrow keys: each is written
// beside its point and spoken by screen readers.
class CourseCanvas : public QWidget {
public:
    explicit CourseCanvas(CourseView& view);

    // The view has another picture.
    void pictureChanged();
    // The point that the user reads, -1 for none.
    qsizetype currentPoint() const { return m_current; }

protected:
    void changeEvent(QEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    enum class Way { Before, After, Above, Below, First, Last };
    bool move(Way way);
    qsizetype beyond(Way way) const;
    qsizetype pointAt(QPoint place);
    const QList<CoursePoint>& points();
    void read(qsizetype point, bool byKey);
    void forget();
    void drawReading(QPainter& painter) const;
    void redraw();

    CourseView& m_view;
    QList<CoursePoint> m_points; // made when they are first needed
    QPixmap m_drawn; // the picture alone
    qsizetype m_current = -1;
};

}
