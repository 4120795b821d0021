#pragma once

#include "qt/course/CoursePicture.h"

#include <QWidget>

#include <memory>

class QTableView;

namespace health {

class CourseCanvas;

// Shows a picture of a course, or the same as a table. Without a picture it shows nothing.
class CourseView : public QWidget {
    Q_OBJECT
public:
    explicit CourseView(QWidget* parent);
    ~CourseView() override;

    // Replaces the picture; null for none. A point that the user reads stays if the new picture has it too.
    void setPicture(std::unique_ptr<CoursePicture> picture);
    const CoursePicture* picture() const { return m_picture.get(); }

    bool isTable() const { return m_isTable; }
    void showAsTable(bool table);

    // The height that the picture or the table needs.
    int heightFor(int width) const;
    CourseLook look() const { return { font(), palette() }; }

    void copyPicture() const;
    void copyTable() const;

Q_SIGNALS:
    // The user has chosen a record in the picture: its index in the list of records.
    void recordChosen(int record);
    // heightFor() has changed.
    void heightChanged();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void openMenu(QPoint global);
    void fillTable();
    QImage image() const;

    std::unique_ptr<CoursePicture> m_picture;
    CourseCanvas* m_canvas;
    QTableView* m_table = nullptr; // made when it is first shown
    bool m_isTable = false;
};

}
