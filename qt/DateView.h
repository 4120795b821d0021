#pragma once

#include "platform/mevZvDate.h"

#include <QLineEdit>
#include <QToolButton>

namespace health {

class QtDesktop;

// A line for a date in any of the forms that mevZvDate understands, with a calendar.
class DateView : public QWidget, public ControlObserver {
public:
    DateView(mevZvDate& date, QtDesktop& desktop);
    ~DateView() override { m_date.setObserver(nullptr); }
    void controlChanged(Control& control, Change change) override;

    // Hands what was typed to the control; false when the form did not take it as it was.
    bool commit();
    QLineEdit* line() { return m_line; }
    void setSpokenName(const QString& name);

private:
    void mirrorOptions();
    void openCalendar();

    mevZvDate& m_date;
    QtDesktop& m_desktop;
    QLineEdit* m_line;
    QToolButton* m_button;
};

}
