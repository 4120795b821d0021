#include "host/framework/HostObjects.h"

#include "host/framework/DisplayText.h"
#include "toolkit/QtText.h"

#include <QTimeZone>

#include <cstdlib>

using namespace Qt::StringLiterals;

namespace health {

namespace {

// The bit of the flags that lets the host ask the user: set in 44, clear in 12.
constexpr int MayAsk = 32;

}

// Empty in the hour that a clock shows twice or not at all, and for an offset that is not in whole minutes.
std::optional<int> certainOffset(std::chrono::local_seconds time, const QTimeZone& zone)
{
    constexpr qint64 day = 86400;
    const qint64 local = time.time_since_epoch().count();
    const auto offsetAt = [&](qint64 seconds) { return zone.offsetFromUtc(QDateTime::fromSecsSinceEpoch(seconds)); };
    std::optional<int> found;
    for (const int offset : { offsetAt(local - day), offsetAt(local + day) }) {
        if (offsetAt(local - offset) != offset)
            continue;
        if (found && *found != offset)
            return std::nullopt;
        found = offset;
    }
    return found && *found % 60 == 0 ? found : std::nullopt;
}

Text HostPatient::age() const
{
    const auto months = ageInMonths(data.birth, QDate::currentDate());
    return months ? std::to_wstring(*months / 12) : Text();
}

Text HostPatient::displayName() const { return health::displayName(data.name).toStdWString(); }

Text HostPatient::displayAge() const { return health::displayAge(data.birth, QDate::currentDate()).toStdWString(); }

Text HostPatient::birthDate() const { return isoDate(data.birthDate).toStdWString(); }

// Unknown for a clock elsewhere.
Text HostSite::zoneOffset(std::chrono::local_seconds time) const
{
    const auto offset = m_hasLocalClock ? certainOffset(time, QTimeZone::systemTimeZone()) : std::nullopt;
    if (!offset)
        return {};
    const int minutes = std::abs(*offset) / 60;
    return u"%1%2:%3"_s.arg(QChar(*offset < 0 ? u'-' : u'+'))
        .arg(minutes / 60, 2, 10, QChar(u'0'))
        .arg(minutes % 60, 2, 10, QChar(u'0'))
        .toStdWString();
}

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
