#include "host/framework/HostObjects.h"

#include "host/framework/DisplayText.h"
#include "toolkit/QtText.h"

using namespace Qt::StringLiterals;

namespace health {

namespace {

// The bit of the flags that lets the host ask the user: set in 44, clear in 12.
constexpr int MayAsk = 32;

}

Text HostPatient::age() const
{
    const auto months = ageInMonths(data.birth, QDate::currentDate());
    return months ? std::to_wstring(*months / 12) : Text();
}

Text HostPatient::displayName() const { return health::displayName(data.name).toStdWString(); }

Text HostPatient::displayAge() const { return health::displayAge(data.birth, QDate::currentDate()).toStdWString(); }

Text HostEncounter::displayText() const
{
    return data.number == 0 ? Text() : u"%1, %2"_s.arg(displayDate(data.date), data.location).toStdWString();
}

bool HostEncounter::prepare(int flags)
{
    if (data.number == 0 && (flags & MayAsk))
        m_choose();
    return data.number != 0;
}

void HostPrintPreview::preview(TextView report, TextView title, TextView subtitle1, TextView subtitle2,
    TextView subtitle3, int lineWidth, bool pageNumbers, bool patientHeading)
{
    Report shownReport;
    shownReport.text = toQString(report);
    shownReport.title = toQString(title);
    for (const TextView subtitle : { subtitle1, subtitle2, subtitle3 }) {
        if (!subtitle.empty())
            shownReport.subtitles.append(toQString(subtitle));
    }
    shownReport.lineWidth = lineWidth;
    shownReport.pageNumbers = pageNumbers;
    shownReport.patientHeading = patientHeading;
    m_show(shownReport);
}

bool HostPrintPreview::previewPages(Printout& pages)
{
    m_showPages(pages);
    return true;
}

}
