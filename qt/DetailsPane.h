#pragma once

#include "text/Dates.h"

#include <QWidget>

class QAction;
class QScrollArea;

namespace health {

class CourseView;
class DetailsHeading;
class FieldList;
class FoldButton;
class ShownRecords;

// The details below the list: the selected record's fields, and how the records of its kind developed. Reads the listed
// records and asks the server nothing.
class DetailsPane : public QWidget {
    Q_OBJECT
public:
    // The records must outlive the pane.
    DetailsPane(ShownRecords& records, QWidget* parent);

    // Shows and hides the pane.
    QAction& action() { return *m_action; }

    // Only the heading is shown.
    bool isFolded() const { return m_isFolded; }
    void setFolded(bool folded);

    // What the heading says, for screen readers.
    QString headingText() const;

    QSize minimumSizeHint() const override;
    QSize sizeHint() const override;

protected:
    void changeEvent(QEvent* event) override;
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void refreshLater();
    void refresh();
    void showNothing();
    void showRecord(int selected);
    void chooseRecord(int record);
    void arrange();
    void arrangeBody();
    void followWindow();
    bool isWindowLow() const;
    void settleLater();
    void takeHeight(int height);
    int headingHeight() const;
    QString registryDue() const;

    ShownRecords& m_records;
    QAction* m_action;
    FoldButton* m_fold;
    DetailsHeading* m_heading;
    QScrollArea* m_scroll;
    QWidget* m_body;
    FieldList* m_fields;
    CourseView* m_course;
    QString m_patient; // whose record is shown
    bool m_refreshing = false; // refresh() is under way or will be called
    bool m_hasRecord = false;
    bool m_isLow = false; // the window is too low for more than the heading
    bool m_isFolded = false;
    int m_usualHeight = 0; // when it was last unfolded in a window that is high enough
};

}
