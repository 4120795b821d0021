#pragma once

#include "qt/course/CoursePicture.h"

#include <QPixmap>
#include <QWidget>

namespace health {

// Draws the picture of a course. The user reads its values with the pointer or with the arrow keys: each is written
// beside its point and spoken by screen readers.
class CourseCanvas : public QWidget {
    Q_OBJECT
public:
    explicit CourseCanvas(QWidget* parent);

    // Null for none. The picture must outlive its use here. A point that the user reads stays if the new picture has
    // it too.
    void setPicture(const CoursePicture* picture);
    // The point that the user reads, -1 for none.
    qsizetype currentPoint() const { return m_current; }

Q_SIGNALS:
    // The user has chosen a record in the picture: its index in the list of records.
    void recordChosen(int record);
    void copyWanted();
    // `global` is where the menu is to open.
    void menuWanted(QPoint global);

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
    QRect picturePlace() const; // within the focus frame
    void drawReading(QPainter& painter) const;
    CourseLook look() const { return { font(), palette() }; }
    void pictureChanged();
    void redraw();

    const CoursePicture* m_picture = nullptr;
    QList<CoursePoint> m_points; // made when they are first needed
    QPixmap m_drawn; // the picture alone
    qsizetype m_current = -1;
};

}
