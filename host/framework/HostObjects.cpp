#include "host/framework/HostObjects.h"

#include "host/framework/DisplayText.h"

namespace health {

namespace {

// Bit of the flags by which a caller allows the user to be asked: 44 has it, 12 has not.
constexpr int MayAsk = 32;

QString shown(TextView text) { return QString::fromWCharArray(text.data(), static_cast<qsizetype>(text.size())); }

}

Text HostPatient::age() const
{
    const auto months = ageInMonths(data.birth, QDate::currentDate());
    return months ? std::to_wstring(*months / 12) : Text();
}

bool HostEncounter::prepare(int flags)
{
    if (data.number == 0 && (flags & MayAsk))
        choose();
    return data.number != 0;
}

void HostPrintPreview::preview(TextView report, TextView title, TextView subtitle1, TextView subtitle2,
    TextView subtitle3, int lineWidth, bool pageNumbers, bool patientHeading)
{
    Report shownReport;
    shownReport.text = shown(report);
    shownReport.title = shown(title);
    for (const TextView subtitle : { subtitle1, subtitle2, subtitle3 }) {
        if (!subtitle.empty())
            shownReport.subtitles.append(shown(subtitle));
    }
    shownReport.lineWidth = lineWidth;
    shownReport.pageNumbers = pageNumbers;
    shownReport.patientHeading = patientHeading;
    show(shownReport);
}

}
