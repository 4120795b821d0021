#pragma once

#include "platform/controls/mevZvDate.h"
#include "qt/EntryLine.h"
#include "qt/Mirror.h"

#include <QToolButton>

namespace health {

class QtDesktop;

// A line for a date in any of the forms that mevZvDate understands, with a calendar.
class DateView : public Mirror<QWidget, mevZvDate> {
public:
    DateView(mevZvDate& date, QtDesktop& desktop);

    EntryLine* line() { return m_line; }
    void setSpokenName(const QString& name);

private:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void mirror(Change change) override;
    void mirrorOptions();
    void openCalendar();
    QString askCalendar();
    void pick(const QString& date);

    QtDesktop& m_desktop;
    EntryLine* m_line;
    QToolButton* m_button;
};

}
