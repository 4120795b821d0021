#include "tests/support/ScriptedHost.h"

#include <gtest/gtest.h>

namespace health::test {

class HostObjects : public testing::Test {
protected:
    ScriptedHost host;
    modShared shared { host.desktop };

    // The keys are the server's reply.
    Text permissionFor(TextView keys, TextView extraKey = L"MEVZ REP HIST EDIT")
    {
        host.session->reply(L"MEVUTL CHKSEC", keys);
        shared.CheckSecurity(L"MEV DISABLE REP HIST EDITING", extraKey);
        return shared.PermissionMessage();
    }
};

TEST_F(HostObjects, AreObtainedOnceInTheirOrder)
{
    shared.InitObjects(host, true);
    const Transcript expected { L"load frmDummy", L"unload frmDummy", L"object DRN_VIM.VIM",
        L"object CSS_Patient.Patient", L"object CSS_User.User", L"object CSS_Site.Site",
        L"object CSS_Encounter.Encounter", L"object zvPrint.zvPrintX" };
    EXPECT_EQ(host.transcript, expected);
    shared.InitObjects(host, false);
    EXPECT_EQ(host.transcript, expected);
    EXPECT_EQ(host.patient->prompts, 0);
    EXPECT_EQ(host.managers, 1);
    EXPECT_EQ(shared.instanceCount(), 2);
}

TEST_F(HostObjects, OutsideTheHostApplicationMissingContextIsPromptedForOnce)
{
    host.session->objects.erase(L"DRN_VIM.VIM");
    host.session->connected = false;
    shared.InitObjects(host, false);
    shared.InitObjects(host, false); // a second panel
    EXPECT_EQ(host.transcript[1], L"connect ''"); // before the objects
    EXPECT_EQ(host.patient->prompts, 1);
    EXPECT_EQ(host.encounter->promptKinds, std::vector { 1 });
    host.patient->patientNumber = 7;
    host.encounter->visit = 70;
    modShared another(host.desktop);
    another.InitObjects(host, false); // is connected and has its context
    EXPECT_LINES(L"connect", L"connect ''");
    EXPECT_EQ(host.patient->prompts, 1);
    EXPECT_EQ(host.encounter->promptKinds.size(), 1u);
}

TEST_F(HostObjects, FailedStartIsReportedAndNotRepeated)
{
    host.session->objects.erase(L"CSS_Site.Site");
    shared.InitObjects(host, false);
    EXPECT_BOXES(failureBox(L"modShared at InitObjects", L"The host has no object \"CSS_Site.Site\"."));
    EXPECT_EQ(host.transcript.end()[-4], L"object CSS_Site.Site"); // the rest was not asked for
    EXPECT_NO_THROW(shared.user());
    EXPECT_THROW(shared.encounter(), Failure);
    shared.InitObjects(host, false);
    EXPECT_EQ(host.managers, 1);
    EXPECT_EQ(shared.instanceCount(), 2);
}

TEST_F(HostObjects, AreReleasedWithTheLastInstance)
{
    shared.InitObjects(host, false);
    shared.InitObjects(host, false);
    permissionFor(L"0|0|1|0^0~");
    shared.ReleaseObjects();
    EXPECT_TRUE(shared.hasSession());
    shared.ReleaseObjects();
    EXPECT_FALSE(shared.hasSession());
    for (const long uses : { host.patient.use_count(), host.user.use_count(), host.encounter.use_count() })
        EXPECT_EQ(uses, 2); // the host's own
    EXPECT_EQ(shared.VersionText(), L"1.0.0.0  Personal Health");
    shared.ReleaseObjects();
    EXPECT_EQ(shared.instanceCount(), 0);
    shared.InitObjects(host, false);
    EXPECT_EQ(host.managers, 2);
}

TEST_F(HostObjects, PermissionMessage)
{
    shared.InitObjects(host, false);
    const Text noKey = L"You do not have either the 'PROVIDER' or the 'MEVZ REP HIST EDIT' security keys";
    const Text parameter = L"assigned the 'MEV DISABLE REP HIST EDITING' parameter";
    for (const auto& [reply, message] : { std::pair<TextView, Text> { L"0|0|0|0^0~", noKey },
             { L"-1^Not allowed.", noKey }, { L"1|1|1|1^1~CLERKS", L"You have the 'MEVZ VIEW ONLY' security key" },
             { L"1|0|0|0^1~CLERKS", L"You have been " + parameter },
             { L"1|0|0|0^0~CLERKS", L"You are a member of the user class 'CLERKS' which has been " + parameter } })
        EXPECT_EQ(permissionFor(reply), message + L", thus you cannot make modifications.") << narrow(reply);
    EXPECT_EQ(permissionFor(L"1|0|0|0^0~") + permissionFor(L"0|0|0|1^0~"), L"");
    EXPECT_TRUE(host.boxes().empty()); // the error reply is not shown either
    EXPECT_EQ(host.calls().front(),
        L"call MEVUTL CHKSEC(PROVIDER|MEVZ CAC|MEVZ VIEW ONLY|MEVZ REP HIST EDIT^MEV DISABLE REP HIST EDITING)");
    // Without an extra key PROVIDER is not required.
    EXPECT_EQ(permissionFor(L"0|0|0|0^0~", L""), L"");
}

TEST_F(HostObjects, UserParameterIsAskedOncePerSession)
{
    shared.InitObjects(host, false);
    host.transcript.clear();
    EXPECT_EQ(shared.GetUserParam(L"RepHist-PedWtOpt", L"0"), L"0");
    EXPECT_EQ(shared.GetUserParam(L"RepHist-PedWtOpt", L"2"), L"2"); // the empty value is kept, the default is not
    EXPECT_CALLS(L"call MEVUTL GETPARM(RepHist-PedWtOpt)");
    EXPECT_EQ(host.session->values.at(L"MEVParam_RepHist_PedWtOpt"), L"");

    shared.SetUserParam(L"RepHist-PedWtOpt", L"1");
    EXPECT_EQ(shared.GetUserParam(L"RepHist-PedWtOpt", L"0"), L"1");
    host.session->reply(L"MEVUTL SETPARM", L"-1^Not here.");
    shared.SetUserParam(L"RepHist-PedWtOpt", L"2");
    EXPECT_EQ(shared.GetUserParam(L"RepHist-PedWtOpt", L"0"), L"1"); // refused: the old value remains
    EXPECT_BOXES(L"box [Setting Parameter RepHist-PedWtOpt] Not here.");
}

}
