#pragma once

#include <QAction>
#include <QObject>

namespace health {

class ShownRecords;

// The panel's commands that print the list and the course of the selected record's kind. They make no call.
class PrintActions : public QObject {
public:
    // Publishes the actions in the panel, which owns the object. The records must outlive it.
    PrintActions(ShownRecords& records, QWidget& panel);

private:
    void follow();
    void printList();
    void printCourse();

    ShownRecords& m_records;
    QAction m_list;
    QAction m_course;
};

}
