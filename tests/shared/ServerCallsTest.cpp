#include "tests/support/ScriptedHost.h"

#include <gtest/gtest.h>

#include <limits>

namespace health::test {

class ServerCalls : public testing::Test {
protected:
    ServerCalls()
    {
        shared.InitObjects(host, false);
        host.transcript.clear();
    }

    void reply(TextView call, TextView text) { host.session->reply(call, text); }

    ScriptedHost host;
    modShared shared { host.desktop };
};

TEST_F(ServerCalls, CallsRunUnderTheHourglassAndAFailedOneShowsABox)
{
    reply(L"MEVREP GET", L"G1^");
    EXPECT_EQ(shared.CallRpc(L"MEVREP GET", L"12^^1"), L"G1^");
    host.session->failCall(L"MEVVELD GET", L"The server is gone.");
    const Text reply = shared.CallRpcList(L"MEVVELD GET", L"12");
    EXPECT_EQ(reply, L"");
    EXPECT_FALSE(shared.CheckRpcError(reply, L""));
    EXPECT_LINES(L"", L"pointer 11", L"call MEVREP GET(12^^1)", L"pointer 0", L"pointer 11", L"list MEVVELD GET(12)",
        L"pointer 0", L"box [System Error] Error in remote procedure call: MEVVELD GET\r\nThe server is gone.");
    EXPECT_EQ(host.desktop.styles, std::vector { 16 });
}

TEST_F(ServerCalls, OutcomeIsThatOfTheCallNotOfThoseDuringItsBox)
{
    host.session->failCall(L"MEVVELD GET", L"No such routine.");
    host.session->losesServerAt = L"MEVVAST GET";
    for (const auto& [name, result] : { std::pair<TextView, CallResult> { L"MEVVELD GET", CallResult::Failed },
             { L"MEVVAST GET", CallResult::ServerGone }, { L"MEVREP GET", CallResult::Answered } }) {
        host.desktop.whileBoxIsOpen = [this] { shared.CallRpc(L"MEVREP GET", L""); };
        shared.CallRpc(name, L"");
        EXPECT_EQ(shared.lastCall(), result) << narrow(name);
    }
}

TEST_F(ServerCalls, ErrorCodeOfAReply)
{
    for (const auto& [reply, code] : { std::pair<TextView, long long> { L"", 0 }, { L"0^x", 0 }, { L"5^x", 0 },
             { L"word^x", 0 }, { L"-3^x", 3 }, { L"-1", 1 }, { L"-1\r\n", 1 }, { L"-3abc^x", 3 }, { L"-^x", 0 },
             { L"-0.5^x", 0 }, { L"-0.2^x", 0 }, { L"-1.5^x", 2 }, { L"-2.5^x", 2 }, { L" -4^x", 4 },
             { L"-1E999^x", std::numeric_limits<long long>::max() } })
        EXPECT_EQ(modShared::RpcErrorCode(reply), code) << narrow(reply);
}

TEST_F(ServerCalls, ServerErrorIsShownUnderTheCallersTitleIfItHasAMessage)
{
    EXPECT_TRUE(shared.CheckRpcError(L"-1^No such patient.^further piece", L"Own Title"));
    for (const TextView reply : { L"-3^Refused.\r\n", L"-1", L"-1^", L"-1^\r\n" })
        EXPECT_TRUE(shared.CheckRpcError(reply, L"")) << narrow(reply);
    EXPECT_LINES(L"", L"box [Own Title] No such patient.", L"status ", L"box [Error] Refused.", L"status ", L"status ",
        L"status ", L"status ");
}

TEST_F(ServerCalls, TrapReportsWithModuleAndProcedure)
{
    EXPECT_FALSE(shared.trap(L"frmTxc", L"LoadTXC", [] { throw Failure(L"What happened."); }));
    EXPECT_FALSE(shared.trap(L"frmTxc", L"cmdAdd_Click", [] { throw std::out_of_range("Índex."); }));
    EXPECT_TRUE(shared.trap(L"frmTxc", L"datInit", [] {}));
    EXPECT_LINES(L"", L"pointer 0", L"status ",
        L"box [System Error] Error in module frmTxc at LoadTXC\r\n\r\nWhat happened.", L"pointer 0", L"status ",
        L"box [System Error] Error in module frmTxc at cmdAdd_Click\r\n\r\nÍndex.");
}

TEST_F(ServerCalls, ReportNamesTheFirstFailureEvenWhenTheStatusLineFails)
{
    host.session->failsEvents = true;
    shared.trap(L"modX", L"Y", [] { throw Failure(L"First."); });
    shared.SetStatusText(L"text");
    EXPECT_BOXES(L"box [System Error] Error in module modX at Y\r\n\r\nFirst.",
        L"box [System Error] Error in module modShared at SetStatusText\r\n\r\nNo events today.");
}

TEST_F(ServerCalls, WithoutASessionTheStatusLineIsLeftAlone)
{
    modShared alone(host.desktop);
    alone.SetStatusText(L"text");
    EXPECT_TRUE(host.transcript.empty());
    EXPECT_EQ(alone.CallRpc(L"MEVREP GET", L""), L"");
    EXPECT_BOXES(L"box [System Error] Error in remote procedure call: MEVREP GET\r\n"
                 L"The host's session object is not available.");
}

TEST_F(ServerCalls, VisitDetailShowsTheReportAsItComes)
{
    shared.VisitDetail(L"   ");
    EXPECT_TRUE(host.transcript.empty());
    reply(L"MEVUTL GETRPT", L"-1^No such visit.\r\n");
    shared.VisitDetail(L" 812 ");
    host.print->fails = true;
    shared.ShowReport(L"text", L"Visit Detail");
    EXPECT_LINES(L"list|preview|box", L"list MEVUTL GETRPT( 812 )",
        L"preview [Visit Detail||||80|11] -1^No such visit.\r\n",
        L"box [System Error] Error displaying requested report: Visit Detail\r\nNo printer object.");
}

TEST_F(ServerCalls, BoxesAndTheirTitles)
{
    shared.ErrorBox(L"e", L"");
    shared.InfoBox(L"i", L"");
    shared.WarningBox(L"w", L"");
    shared.ErrorBox(L"", L"never");
    EXPECT_BOXES(L"box [Error] e", L"box [Information] i", L"box [Warning] w");

    Text title;
    shared.ShowMessage(L"", title, BoxStyle::Exclamation);
    EXPECT_EQ(title, L"Warning"); // filled in although nothing was shown
    Text unknownKind;
    shared.ShowMessage(L"?", unknownKind, 5);
    EXPECT_EQ(unknownKind, L"");

    host.desktop.answers = { BoxAnswer::Yes, BoxAnswer::No, BoxAnswer::Closed };
    host.transcript.clear();
    Text confirm;
    EXPECT_TRUE(shared.ConfirmBox(L"", confirm));
    EXPECT_BOXES(L"box [Confirm] ");
    EXPECT_EQ(confirm, L"Confirm");
    EXPECT_FALSE(shared.ConfirmBox(L"Sure?", confirm));
    EXPECT_FALSE(shared.ConfirmBox(L"Sure?", confirm));
    EXPECT_EQ(host.desktop.styles, (std::vector { 16, 64, 48, 5, 292, 292, 292 }));
}

TEST_F(ServerCalls, EditKeysWithControlAlone)
{
    int cell = 0;
    for (const auto& [key, shift, message] :
        { std::tuple<int, int, TextView> { 65, 2, L"edit 177 0 -1" }, { 67, 2, L"edit 769 0 0" },
            { 86, 2, L"edit 770 0 0" }, { 88, 2, L"edit 768 0 0" }, { 89, 2, L"edit 1108 0 0" },
            { 90, 2, L"edit 199 0 0" }, { 65, 0, L"" }, { 65, 3, L"" }, { 67, 6, L"" }, { 66, 2, L"" } }) {
        host.transcript.clear();
        host.desktop.lastEdited = nullptr;
        int keyCode = key;
        shared.FilterEditKeys(keyCode, shift, &cell);
        EXPECT_EQ(host.transcript, message.empty() ? Transcript {} : Transcript { Text(message) }) << key;
        EXPECT_EQ(keyCode, message.empty() ? key : 0) << key;
        EXPECT_EQ(host.desktop.lastEdited, message.empty() ? nullptr : &cell) << key;
    }
}

}
