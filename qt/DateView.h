#pragma once

#include "platform/controls/mevZvDate.h"
#include "qt/EntryLine.h"
#include "qt/Mirror.h"
#include "qt/SpokenName.h"

#include <QToolButton>

namespace health {

class Desktop;

// A line for a date in any form that mevZvDate accepts, and a button that opens a calendar.
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
    void openCalendar();
    QString askCalendar();
    void pick(const QString& date);

    const Desktop& m_desktop;
    EntryLine* m_line;
    QToolButton* m_button;
};

}
