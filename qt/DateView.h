#pragma once

#include "platform/controls/mevZvDate.h"
#include "qt/CalendarButton.h"
#include "qt/EntryLine.h"
#include "qt/Mirror.h"
#include "qt/SpokenName.h"

namespace health {

class Desktop;

// A line for a date in any form that mevZvDate accepts, with a symbol that opens a calendar.
class DateView : public Mirror<QWidget, mevZvDate>, public SpokenParts {
public:
    // The desktop provides the time; it must outlive the view.
    DateView(mevZvDate& date, const Desktop& desktop);

    EntryLine* line() { return m_line; }
    void setSpokenName(const QString& name) override;

private:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void mirror(Change change) override;
    void mirrorOptions();
    void placeButton();
    void openCalendar();
    void pick(Moment day);

    const Desktop& m_desktop;
    EntryLine* m_line;
    CalendarButton* m_button; // in the line
};

}
