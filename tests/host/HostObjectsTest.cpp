#include "host/framework/HostObjects.h"
#include "tests/support/ScriptedTransport.h"

#include <QTimeZone>

#include <gtest/gtest.h>

#include <ctime>

namespace health::test {
namespace {

TEST(HostObjects, StateOnlyACertainOffset)
{
    using namespace std::chrono;
    const QTimeZone zone("America/Denver");
    if (!zone.isValid())
        GTEST_SKIP() << "no time zones on this machine";
    const auto offset = [&](year_month_day day, seconds time) { return certainOffset(local_days(day) + time, zone); };
    constexpr int summer = -6 * 3600;
    constexpr int winter = -7 * 3600;
    EXPECT_EQ(offset(2026y / 7 / 1, 12h), summer);
    EXPECT_EQ(offset(2026y / 1 / 1, 12h), winter);
    EXPECT_EQ(offset(2026y / 3 / 8, 1h + 59min), winter);
    EXPECT_EQ(offset(2026y / 3 / 8, 2h + 30min), std::nullopt); // the clock goes from 2:00 to 3:00
    EXPECT_EQ(offset(2026y / 3 / 8, 3h), summer);
    EXPECT_EQ(offset(2026y / 11 / 1, 59min), summer);
    EXPECT_EQ(offset(2026y / 11 / 1, 1h + 30min), std::nullopt); // shown twice
    EXPECT_EQ(offset(2026y / 11 / 1, 2h), winter);
    EXPECT_EQ(offset(1850y / 1 / 1, 12h), std::nullopt); // local mean time has seconds
}

TEST(HostObjects, WritesTheOffset)
{
    ScriptedTransport transport;
    HostSession session(transport, 300, [](const QString&) { return false; });
    const auto summer = std::chrono::local_days(std::chrono::July / 1 / 2026) + std::chrono::hours(12);
    const QByteArray before = qgetenv("TZ");
    for (const auto& [zone, shown] : { std::pair("America/St_Johns", L"-02:30"), std::pair("Europe/Berlin", L"+02:00"),
             std::pair("UTC", L"+00:00") }) {
        qputenv("TZ", zone);
        ::tzset();
        EXPECT_EQ(HostSite(session, true).zoneOffset(summer), shown);
        EXPECT_EQ(HostSite(session, false).zoneOffset(summer), L""); // the clock is elsewhere
    }
    before.isNull() ? qunsetenv("TZ") : qputenv("TZ", before);
    ::tzset();
}

TEST(HostObjects, BirthDatesKeepTheirPrecision)
{
    HostPatient patient([] {});
    for (const auto& [stored, shown] : { std::pair(u"2960402", L"1996-04-02"), std::pair(u"2960400", L"1996-04"),
             std::pair(u"2960000", L"1996"), std::pair(u"", L""), std::pair(u"2960231", L"") }) {
        patient.data.birthDate = QString::fromUtf16(stored);
        EXPECT_EQ(patient.birthDate(), shown);
    }
}

}
}
