#pragma once

#include "platform/mevZvDate.h"
#include "qt/Mirror.h"

#include <QLineEdit>
#include <QToolButton>

namespace health {

class QtDesktop;

// A line for a date in any of the forms that mevZvDate understands, with a calendar.
class DateView : public Mirror<QWidget, mevZvDate> {
public:
    DateView(mevZvDate& date, QtDesktop& desktop);

    // Hands what was typed to the control; false when the form did not take it as it was.
    bool commit();
    QLineEdit* line() { return m_line; }
    void setSpokenName(const QString& name);

private:
    void mirror(Change change) override;
    void mirrorOptions();
    void openCalendar();

    QtDesktop& m_desktop;
    QLineEdit* m_line;
    QToolButton* m_button;
};

}
