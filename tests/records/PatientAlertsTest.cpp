#include "records/PatientAlerts.h"

#include "tests/support/ControlFixture.h"

namespace health::test {
namespace {

class PatientAlerts : public ControlFixture {
protected:
    // The alerts as texts; "!" precedes a caution.
    Transcript alerts(TextView registryDue = {})
    {
        push(L"REFRESH");
        Transcript texts;
        for (const PatientAlert& alert : patientAlerts(listedRecords(control), host.desktop.now(), registryDue))
            texts.push_back((alert.kind == PatientAlert::Kind::Caution ? L"!" : L"") + alert.text);
        return texts;
    }

    // A line of an assessment.
    static Text assessment(TextView date, TextView change)
    {
        return L"1^^" + Text(date) + L"|81^" + Text(12, L'^') + Text(change) + L"^NO\r\n";
    }
};

TEST_F(PatientAlerts, PregnancyComesFromTheEstimatedDeliveryAlone)
{
    open(12);
    EXPECT_EQ(alerts(), Transcript {});
    for (const auto& [reply, alert] :
        { std::pair<TextView, TextView> { L"G1^^^^^03/16/2026", L"!Pregnant, due 03/16/2026" },
            { L"G1^^^^SONOGRAM^03/15/2026", L"!Pregnant, due 03/15/2026" }, // today
            { L"G1^^^^SONOGRAM^03/14/2026", L"Estimated delivery 03/14/2026 has passed" },
            { L"G1^07/24/2026^^^SONOGRAM", L"" }, // nothing is computed from other dates
            { L"G1^^^^^02/30/2026", L"" }, { L"G1^^^^^SOON", L"" }, { L"-1^No access.", L"" } }) {
        host.session->reply(L"MEVREP GET", reply);
        EXPECT_EQ(alerts(), alert.empty() ? Transcript {} : Transcript { Text(alert) }) << narrow(reply);
    }
}

TEST_F(PatientAlerts, DeclineCountsOnlyInTheLatestAssessment)
{
    open(12);
    const Text decline = L"!Functional status: decline";
    const Text before = assessment(L"3260310.0930", L"DECLINE");
    for (const auto& [reply, isAlert] :
        { std::pair { before, true }, { before + assessment(L"3260310.1", L"SAME"), false }, // ten o'clock
            { assessment(L"3260310.1", L"DECLINE") + before, true }, { assessment(L"3260311", L"") + before, false },
            { assessment(L"3260310.0930", L"IMPROVEMENT") + before, false },
            { assessment(L"3260309.15", L"SAME") + before, true } }) {
        host.session->reply(L"MEVVELD GET", reply);
        EXPECT_EQ(alerts(), isAlert ? Transcript { decline } : Transcript {}) << narrow(reply);
    }
}

TEST_F(PatientAlerts, AsthmaVisitIsDueOnlyOnAReadableDayOfTheRegistry)
{
    open(12);
    for (const auto& [due, alert] :
        { std::pair<TextView, TextView> { L"", L"" }, { L"03/16/2026", L"Asthma visit due 03/16/2026" },
            { L"03/15/2026", L"Asthma visit due 03/15/2026" }, { L"03/14/2026", L"Asthma visit was due 03/14/2026" },
            { L"02/30/2026", L"" }, { L"03/2026", L"" }, { L"SOON", L"" } })
        EXPECT_EQ(alerts(due), alert.empty() ? Transcript {} : Transcript { Text(alert) }) << narrow(due);
}

TEST_F(PatientAlerts, BothAreSaidAndNothingWithoutAPatient)
{
    host.session->reply(L"MEVREP GET", L"G1^^^^^03/16/2026");
    host.session->reply(L"MEVVELD GET", assessment(L"3260310", L"DECLINE"));
    open(12);
    EXPECT_EQ(alerts(), (Transcript { L"!Pregnant, due 03/16/2026", L"!Functional status: decline" }));
    commitPatient(0);
    EXPECT_EQ(alerts(), Transcript {});
}

}
}
