#include "api/ProgIds.h"
#include "tests/support/Editors.h"
#include "tests/support/FormFixture.h"

namespace health::test {

namespace {

Text wordsOf(const FormHeading& heading)
{
    static constexpr TextView kinds[] = { L"unknown", L"current", L"other" };
    Text words = heading.name;
    for (const Text& detail : heading.details)
        words += L", " + detail;
    return words + L"; " + heading.visit + L" " + Text(kinds[static_cast<int>(heading.visitKind)]) + L"; "
        + heading.record;
}

struct NamedPatient : ScriptedPatient {
    Text displayName() const override { return L"Hartley, Marigold"; }
    Text displayAge() const override { return L"29 years"; }
};
struct NamedEncounter : ScriptedEncounter {
    Text displayText() const override
    {
        return fails     ? throw Failure(L"The host is gone.")
            : visit == 0 ? Text()
                         : Text(L"03/15/2026 08:15, Pediatric Clinic");
    }
};

class Headings : public testing::Test {
protected:
    Headings()
    {
        host.patient = std::make_shared<NamedPatient>();
        host.encounter = encounter;
        host.session->objects[Text(PatientProgId)] = host.patient;
        host.session->objects[Text(EncounterProgId)] = host.encounter;
        shared.InitObjects(host, false);
        host.patient->patientNumber = 12;
        encounter->visit = 81;
        host.session->reply(L"MEVVIF GET", L"5^^3260310.0930|80^X|1\r\n");
        host.session->reply(L"MEVREF GET", L"9^^^EKG^9^EKG^^^3260201^^^\r\n");
    }

    template<typename Editor>
    Text headingOf(const std::function<void(Editor&)>& prepare)
    {
        Editor form(shared);
        prepare(form);
        form.load();
        form.open();
        form.Form_Activate();
        encounter->fails = true; // an open form does not ask again
        const Text words = wordsOf(form.heading());
        encounter->fails = false;
        return words;
    }

    ScriptedHost host;
    std::shared_ptr<NamedEncounter> encounter = std::make_shared<NamedEncounter>();
    modShared shared { host.desktop };
};

TEST_F(Headings, NamePatientVisitAndRecord)
{
    const auto feeding = [this](TextView record, TextView visit) {
        return headingOf<frmInf>([&](frmInf& form) {
            form.m_sIEN = record;
            form.m_sVisit = visit;
        });
    };
    const Text patient = L"Hartley, Marigold, No. 12, F, 29 years; ";
    const Text current = L"Visit 03/15/2026 08:15, Pediatric Clinic";
    EXPECT_EQ(feeding(L"", L"81"), patient + current + L" current; ");
    EXPECT_EQ(feeding(L"5", L"80"), patient + L"Visit 03/10/2026 09:30 other; ");
    EXPECT_EQ(feeding(L"", L"80"), patient + L" other; "); // its date is unknown
    EXPECT_EQ(headingOf<frmRefusal>([](frmRefusal& form) { form.m_sRefusalIen = L"9"; }),
        patient + current + L" unknown; Record of 02/01/2026");
    encounter->visit = 0;
    EXPECT_EQ(headingOf<frmRepHist>([](frmRepHist&) {}), patient + L" unknown; ");
}

}

}
