#include "records/ExportSubject.h"

#include "shared/modShared.h"
#include "text/Conversions.h"
#include "text/DateWords.h"

namespace health {

namespace {

// A reserved domain, for sites that state no URL.
constexpr TextView UnstatedSites = L"https://personal-health.example/sites/";

Text identifiersOf(const Site& site)
{
    Text url = site.identifiers();
    while (url.ends_with(L'/'))
        url.pop_back();
    return url.empty() ? Text(UnstatedSites) + wholeText(site.number()) : url;
}

}

ExportSubject exportSubject(modShared& shared)
{
    const Patient& patient = shared.patient();
    const Site& site = shared.site();
    return { .patient = patient.number(),
        .name = patient.displayName(),
        .sex = patient.sex(),
        .birthDate = patient.birthDate(),
        .identifiers = identifiersOf(site),
        .zoneOffset = [&site](Moment moment) { return site.zoneOffset(moment); },
        .now = shared.desktop().now() };
}

Text ExportedRecords::extent() const
{
    const auto total = static_cast<long long>(listed);
    const Text all = counted(total, L"record");
    return areAll() ? all : wholeText(static_cast<long long>(records.size())) + L" of " + all;
}

Text exportName(const ExportSubject& subject) { return L"patient-" + wholeText(subject.patient); }

}
