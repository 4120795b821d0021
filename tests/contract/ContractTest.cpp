// What the panel relies on in the server's replies. The same tests run against the scripted session, whose replies the
// other tests are written with, and against the real server, so that the two cannot drift apart.
#include "control/GridLoader.h"
#include "control/kalmevRepHistCtrl.h"
#include "lookups/LookupTables.h"
#include "platform/Conversions.h"
#include "shared/FileManDates.h"
#include "tests/support/RealServer.h"
#include "tests/support/ScriptedHost.h"

#include <gtest/gtest.h>

#include <memory>
#include <regex>

namespace health::test {
namespace {

class Backend {
public:
    virtual ~Backend() = default;
    virtual Session& session() = 0;
};

// The parameter of an empty search, as the dialog sends it.
Text searchOf(const LookupTable& table)
{
    return Text(table.file) + L"^^^^250^" + Text(table.index) + L"^" + Text(table.screen) + L"^^" + Text(table.fields);
}

// What a save refuses, with visit 1 of patient 1.
struct BadSave {
    TextView call;
    TextView parameter;
    TextView message;
};
constexpr BadSave BadSaves[] = {
    { L"MEVVELD SET", L"^1^Often^^^^^^^^^^^^^", L"The answer Often is not known." },
    { L"MEVVELD SET", L"^1^^^^^^^^^^^^^Independent^", L"The answer Independent is not known." },
    { L"MEVVELD SET", L"^99999999^^^^^^^^^^^^^^", L"The visit 99999999 does not exist." },
    { L"MEVVELD SET", L"99999999^1^^^^^^^^^^^^^^", L"The record 99999999 does not exist any more." },
    { L"MEVVAST SET", L"^1^5^^^^^^^", L"The severity is not known." },
    { L"MEVVAST SET", L"^1^^151^^^^^^", L"The lung function value 151 is not possible." },
    { L"MEVVAST SET", L"^1^^^^99^^^^", L"The lung function value 99 is not possible." },
    { L"MEVVAST SET", L"^1^^^^^Maybe^^^", L"The answer Maybe is not Yes or No." },
    { L"MEVVTXC SET", L"^1^X^01/02/2026^1", L"The type of contract is not known." },
    { L"MEVVTXC SET", L"^1^P^02/30/2026^1", L"The date initiated is not a date." },
    { L"MEVVTXC SET", L"^1^P^01/02/2099^1", L"The contract cannot begin in the future." },
    { L"MEVVTXC SET", L"^1^P^01/02/2026^99999", L"The provider is not known." },
    { L"MEVVER SET", L"^1^e^^^^^^^^^^", L"The code e is not known." },
    { L"MEVVER SET", L"^1^^^^^^^^^3260230.08^^", L"The departure 3260230.08 is not a date." },
    { L"MEVVER SET", L"^1^^^^^^^^^^^^LOC.`99999", L"The place of the transfer is not known." },
    { L"MEVREF SET", L"^TATTOO^1^1^01/02/2026^", L"The refusal's type is not known." },
    { L"MEVREF SET", L"^EXAM^99999^1^01/02/2026^", L"The refused item is not known." },
    { L"MEVREF SET", L"^EXAM^1^1^01/02/2099^", L"The refusal cannot be in the future." },
    { L"MEVREF SET", L"^EXAM^1^1^^", L"The refusal's date is not a date." },
    { L"MEVREF SET", L"3^EXAM^1^1^01/02/2026^", L"The refusal belongs to another patient." },
};

// Patient 1 is a pregnant woman, 5 an infant, 13 has refusals of every kind, 14 has nothing.
class ScriptedBackend : public Backend {
public:
    ScriptedBackend()
    {
        ScriptedSession& s = *m_host.session;
        s.reply(L"MEVUTL CHKSEC", L"1|1|0|0^0~");
        s.reply(L"MEVUTL SETPARM", L"1");
        s.reply(L"MEVUTL SETPARM", L"MEVZ^1", L"-1^The parameter MEVZ may not be changed here.");
        s.reply(L"MEVUTL GETPARM", L"RepHist-PedWtOpt", L"2");
        s.reply(L"MEVUTL GETRPT", L"VISIT 1\r\n");
        s.reply(L"MEVREP GET", L"1^^1", L"G3P1LC1SA1TA0^07/24/2026^NONE^01/25/2026^SONOGRAM^04/30/2027");
        s.reply(L"MEVREP GET", L"1", L"G3P1LC1SA1TA0^07/24/2026^NONE^01/25/2026^SONOGRAM^04/30/2027");
        s.reply(L"MEVBMSR GET", L"5", L"7^2^3.23^3232^^^^^^2^1M^6M^6M^HARTLEY,MARIGOLD ROSE|1");
        s.reply(L"MEVVIF GET", L"5", L"2^^3261030.1015|8^MOSTLY FORMULA|4\r\n1^^3260902.093|7^FORMULA ONLY|5\r\n");
        s.reply(L"MEVVELD GET", L"1",
            L"1^^3261121.0815|1^INDEPENDENT^INDEPENDENT^^INDEPENDENT^^^^^^NEEDS HELP^TOTALLY DEPENDENT^^SAME^NO\r\n");
        s.reply(L"MEVVAST GET", L"1",
            L"1^^3261121.0815|1^MILD INTERMITTENT|1^93^49^420^YES^YES^NO^YES\r\n2^1^3260922.143|2^MILD "
            L"PERSISTENT|2^61^95^400^NO^YES^YES^NO\r\n");
        s.reply(L"MEVVTXC GET", L"1", L"1^^11/21/2026@08:15|1^MENTAL HEALTH|M^11/21/2026^OAKHURST,KATHERINE J|15\r\n");
        s.reply(L"MEVREP SET", L"1");
        s.reply(L"MEVREP SET", L"1^Gx", L"-1^The counts Gx cannot be read.");
        s.reply(L"MEVREP SET", L"1^G1P0LC0SA0TA0^02/30/2026^^", L"-1^02/30/2026 is not a date.");
        s.reply(L"MEVBMSR SET", L"1");
        s.reply(L"MEVBMSR SET", L"5^heavy^2^^^^", L"-1^The birth weight heavy cannot be read.");
        s.reply(L"MEVBMSR SET", L"5^7 2^25^^^^", L"-1^The birth order 25 is not possible.");
        s.reply(L"MEVVIF SET", L"^8^9", L"-1^The feeding choice is not known.");
        s.reply(L"MEVVIF SET", L"99999999^8^1", L"-1^The record 99999999 does not exist any more.");
        for (const TextView call : { L"MEVVIF DEL", L"MEVVELD DEL", L"MEVVAST DEL", L"MEVVTXC DEL", L"MEVREF DEL" })
            s.reply(call, L"99999999", L"-1^The record 99999999 does not exist any more.");
        s.reply(L"MEVVELD GET", L"^1", L"1^^3261121.0815|1^INDEPENDENT^^^^^^^^^^^^SAME^NO\r\n");
        s.reply(L"MEVVAST GET", L"^1", L"1^^3261121.0815|1^MILD INTERMITTENT|1^93^49^420^YES^YES^NO^YES\r\n");
        s.reply(L"MEVVTXC GET", L"^1", L"1^^11/21/2026@08:15|1^MENTAL HEALTH|M^11/21/2026^OAKHURST,KATHERINE J|15\r\n");
        s.reply(L"MEVVER GET", L"^1",
            L"1^^3261120.2245|542^NON-EMERGENT|N^POV|POV^^WHEEL CHAIR|W^Patient^RELATIVE|R^DISCHARGED|D^^11/20/"
            L"2026@22:45^^Stable^\r\n");
        for (const TextView call : { L"MEVVELD GET", L"MEVVAST GET", L"MEVVTXC GET", L"MEVVER GET" })
            s.reply(call, L"^99999999", L"-1^The record 99999999 does not exist any more.");
        s.reply(L"MEVREF GET", L"13^3", L"3^^^EKG^1^ELECTROCARDIOGRAM^^^3261106^^^Said no\r\n");
        s.reply(L"MEVREF GET", L"14^3", L"-1^The refusal 3 does not exist any more.");
        s.reply(L"MEVVAST GETREG", L"11", L"11^ACTIVE|A^10/12/2026^01/10/2027^12/12/2026^WHITCOMB,YOLANDA D|46");
        s.reply(L"MEVVAST GETNOTE", L"11", L"Spacer technique checked.\r\nCall before the pollen season.\r\n");
        for (const TextView call : { L"MEVVAST GETREG", L"MEVVAST GETNOTE" })
            s.reply(call, L"999999", L"-1^There is no patient 999999.");
        for (const TextView type : { L"EKG", L"PAP Smear", L"Mammogram" })
            s.reply(L"MEVREF REFLIST", type, L"1");
        s.reply(L"MEVREF REFLIST", L"Lab", L"-1^There is no single item of this type.");
        for (const BadSave& save : BadSaves)
            s.reply(save.call, save.parameter, L"-1^" + Text(save.message));
        s.reply(L"MEVUTL DICLKUP", L"2^HARTLEY^^^250^^^^.01;.02;.03;.09",
            L"1^HARTLEY,MARIGOLD ROSE^HARTLEY,MARIGOLD ROSE^F^08/13/1997\r\n");
        s.reply(L"MEVUTL DICLKUP", L"2^^^^250^^K ^MEVPAT^^.01", L"-1^This screen is not known.");
        for (int number = 0; number < 25; ++number) {
            if (const LookupTable& table = lookupTable(number); table.allowsEmptySearch)
                s.reply(table.call, searchOf(table),
                    number == 12 || number == 13 ? L"ASTHMA^1^^J45.20\r\n" : L"1^10^10^10^10\r\n");
        }
        s.reply(L"MEVREF GET", L"13", L"3^^^EKG^1^ELECTROCARDIOGRAM^^^3261106^^^Said no\r\n");
        for (const TextView call : { L"MEVVIF GET", L"MEVVELD GET", L"MEVVAST GET", L"MEVVTXC GET", L"MEVREF GET",
                 L"MEVREP GET", L"MEVBMSR GET" }) {
            s.reply(call, L"999999", L"-1^There is no patient 999999.");
            s.reply(call, L"1\"_$H", L"-1^There is no patient.");
        }
    }
    Session& session() override { return *m_host.session; }

private:
    ScriptedHost m_host;
};

class RealBackend : public Backend {
public:
    Session& session() override { return m_real.session; }

private:
    RealSession m_real;
};

class Contract : public testing::TestWithParam<const char*> {
protected:
    Contract()
        : backend(std::string(GetParam()) == "scripted" ? std::unique_ptr<Backend>(std::make_unique<ScriptedBackend>())
                                                        : std::make_unique<RealBackend>())
    {
    }

    Text call(TextView name, TextView parameter) { return backend->session().callText(name, parameter); }

    // The lines of a list as their pieces; the list must be whole and not empty.
    std::vector<std::vector<Text>> list(TextView name, TextView parameter)
    {
        const Text reply = backend->session().callList(name, parameter);
        EXPECT_TRUE(reply.ends_with(L"\r\n")) << narrow(name);
        std::vector<std::vector<Text>> lines;
        for (const TextView line : replyLines(reply))
            lines.push_back(SplitPieces(line, L"^", 0));
        EXPECT_FALSE(lines.empty()) << narrow(name);
        return lines;
    }

    static Text joined(const std::vector<Text>& pieces)
    {
        Text text;
        for (const Text& piece : pieces)
            text += (&piece == &pieces.front() ? L"" : L"^") + piece;
        return text;
    }

    static bool matches(const Text& text, const wchar_t* pattern)
    {
        return std::regex_match(text, std::wregex(pattern));
    }

    std::unique_ptr<Backend> backend;
};

INSTANTIATE_TEST_SUITE_P(
    Servers, Contract, testing::Values("scripted", "real"), [](const auto& info) { return std::string(info.param); });

TEST_P(Contract, SecurityHasOnePieceForEachKeyAndTheParameter)
{
    const Text reply =
        call(L"MEVUTL CHKSEC", L"PROVIDER|MEVZ CAC|MEVZ VIEW ONLY|MEVZ REP HIST EDIT^MEV DISABLE REP HIST EDITING");
    EXPECT_EQ(reply, L"1|1|0|0^0~");
}

TEST_P(Contract, ParametersOfTheUser)
{
    EXPECT_EQ(modShared::RpcErrorCode(call(L"MEVUTL SETPARM", L"RepHist-PedWtOpt^2")), 0);
    EXPECT_EQ(call(L"MEVUTL GETPARM", L"RepHist-PedWtOpt"), L"2");
    EXPECT_EQ(call(L"MEVUTL GETPARM", L"Unknown"), L"");
    EXPECT_EQ(call(L"MEVUTL SETPARM", L"MEVZ^1"), L"-1^The parameter MEVZ may not be changed here.");
}

TEST_P(Contract, ReproductiveReply)
{
    const auto pieces = SplitPieces(call(L"MEVREP GET", L"1^^1"), L"^", 5);
    EXPECT_EQ(pieces.size(), 6u);
    EXPECT_TRUE(matches(pieces[0], L"G\\d+P\\d+LC\\d+SA\\d+TA\\d+"));
    for (const std::size_t date : { 1, 3, 5 })
        EXPECT_TRUE(isDate(pieces[date])) << narrow(pieces[date]);
    EXPECT_EQ(pieces[4], L"SONOGRAM"); // the method before the date
    EXPECT_EQ(call(L"MEVREP GET", L"1"), call(L"MEVREP GET", L"1^^1"));
    EXPECT_EQ(call(L"MEVREP GET", L"14"), L""); // nothing is no error
}

TEST_P(Contract, BirthReply)
{
    const auto pieces = SplitPieces(call(L"MEVBMSR GET", L"5"), L"^", 0);
    ASSERT_EQ(pieces.size(), 14u);
    for (const std::size_t number : { 0, 1, 2, 3, 9 })
        EXPECT_TRUE(isNumeric(pieces[number])) << number;
    for (const std::size_t age : { 10, 11, 12 })
        EXPECT_TRUE(matches(pieces[age], L"\\d+[DWMY]")) << narrow(pieces[age]);
    EXPECT_TRUE(matches(pieces[13], L"[^|]+,[^|]+\\|\\d+"));
}

TEST_P(Contract, ListsOfVisitRecords)
{
    struct Case {
        TextView call;
        TextView patient;
        std::size_t pieces;
    };
    for (const Case& c : { Case { L"MEVVIF GET", L"5", 4 }, { L"MEVVELD GET", L"1", 17 }, { L"MEVVAST GET", L"1", 11 },
             { L"MEVVTXC GET", L"1", 6 } }) {
        for (const auto& line : list(c.call, c.patient)) {
            ASSERT_EQ(line.size(), c.pieces) << narrow(c.call);
            EXPECT_TRUE(matches(line[0], L"\\d+"));
            EXPECT_TRUE(matches(line[1], L"1?"));
            EXPECT_TRUE(matches(Piece(line[2], L"|", 2), L"\\d+"));
            EXPECT_NE(fmDateToDisplay(Piece(line[2], L"|", 1)), L"") << narrow(line[2]);
        }
    }
}

TEST_P(Contract, CodedTexts)
{
    for (const auto& line : list(L"MEVVIF GET", L"5"))
        EXPECT_TRUE(matches(line[3], L"[A-Z0-9/& ]+\\|[1-5]")) << narrow(line[3]);
    for (const auto& line : list(L"MEVVAST GET", L"1")) {
        EXPECT_TRUE(matches(line[3], L"[A-Z ]+\\|[1-4]")) << narrow(line[3]);
        for (std::size_t answer = 7; answer < 11; ++answer)
            EXPECT_TRUE(matches(line[answer], L"YES|NO|")) << narrow(line[answer]);
    }
    for (const auto& line : list(L"MEVVTXC GET", L"1")) {
        EXPECT_TRUE(matches(line[3], L"PAIN\\|P|MENTAL HEALTH\\|M")) << narrow(line[3]);
        EXPECT_TRUE(isDate(line[4])) << narrow(line[4]);
        EXPECT_TRUE(matches(line[5], L".+,.+\\|\\d+")) << narrow(line[5]);
    }
    for (const auto& line : list(L"MEVVELD GET", L"1")) {
        for (std::size_t item = 3; item < 15; ++item)
            EXPECT_TRUE(matches(line[item], L"INDEPENDENT|NEEDS HELP|TOTALLY DEPENDENT|")) << narrow(line[item]);
        EXPECT_TRUE(matches(line[15], L"SAME|IMPROVEMENT|DECLINE|"));
        EXPECT_TRUE(matches(line[16], L"YES|NO|"));
    }
}

TEST_P(Contract, RefusalsCarryTheirOwnDateAndNoVisit)
{
    for (const auto& line : list(L"MEVREF GET", L"13")) {
        ASSERT_EQ(line.size(), 12u);
        EXPECT_EQ(line[2], L"");
        EXPECT_FALSE(line[3].empty());
        EXPECT_TRUE(matches(line[4], L"\\d+"));
        EXPECT_NE(fmDateToDisplay(line[8]), L"") << narrow(line[8]);
        EXPECT_TRUE(matches(line[9], L"1?"));
    }
}

TEST_P(Contract, UnknownPatientsAreServerErrors)
{
    for (const TextView name : { L"MEVREP GET", L"MEVBMSR GET", L"MEVVIF GET", L"MEVVELD GET", L"MEVVAST GET",
             L"MEVVTXC GET", L"MEVREF GET" }) {
        for (const TextView parameter : { L"999999", L"1\"_$H" }) {
            const Text reply = call(name, parameter);
            EXPECT_EQ(modShared::RpcErrorCode(reply), 1) << narrow(name) << narrow(reply);
            EXPECT_NE(Piece(reply, L"^", 2), L"");
        }
    }
}

TEST_P(Contract, SavesThatFitAreTaken)
{
    for (const auto& [name, parameter] : std::initializer_list<std::pair<TextView, TextView>> {
             { L"MEVREP SET", L"1^G3P1LC1SA1TA0^07/24/2026^None^01/25/2026^1^04/30/2027^Sonogram" },
             { L"MEVBMSR SET", L"5^7 2^2^6M^2W^5M^1" }, { L"MEVBMSR SET", L"5^3.23K^2^6M^2W^5M^1" } })
        EXPECT_EQ(modShared::RpcErrorCode(call(name, parameter)), 0) << narrow(parameter);
    EXPECT_EQ(Piece(call(L"MEVBMSR GET", L"5"), L"^", 1), L"7"); // pounds, whatever unit was sent
}

TEST_P(Contract, SavesThatDoNotFitAreRefusedInWords)
{
    struct Case {
        TextView name;
        TextView parameter;
        TextView message;
    };
    for (const Case& c : { Case { L"MEVREP SET", L"1^Gx", L"The counts Gx cannot be read." },
             { L"MEVREP SET", L"1^G1P0LC0SA0TA0^02/30/2026^^", L"02/30/2026 is not a date." },
             { L"MEVBMSR SET", L"5^heavy^2^^^^", L"The birth weight heavy cannot be read." },
             { L"MEVBMSR SET", L"5^7 2^25^^^^", L"The birth order 25 is not possible." },
             { L"MEVVIF SET", L"^8^9", L"The feeding choice is not known." },
             { L"MEVVIF SET", L"99999999^8^1", L"The record 99999999 does not exist any more." } })
        EXPECT_EQ(call(c.name, c.parameter), L"-1^" + Text(c.message));
}

TEST_P(Contract, OneRecordIsReadByItsNumber)
{
    const std::pair<TextView, std::size_t> records[] = { { L"MEVVELD GET", 17 }, { L"MEVVAST GET", 11 },
        { L"MEVVTXC GET", 6 }, { L"MEVVER GET", 15 } };
    for (const auto& [name, pieces] : records) {
        const auto lines = list(name, L"^1");
        ASSERT_EQ(lines.size(), 1u) << narrow(name);
        EXPECT_EQ(lines[0].size(), pieces) << narrow(name);
        EXPECT_EQ(lines[0][0], L"1");
        EXPECT_EQ(call(name, L"^99999999"), L"-1^The record 99999999 does not exist any more.");
    }
    const auto emergency = list(L"MEVVER GET", L"^1")[0];
    for (const std::size_t coded : { 3, 4, 6, 8, 9 })
        EXPECT_TRUE(matches(emergency[coded], L".+\\|[A-Z1]+")) << narrow(emergency[coded]);
    EXPECT_NE(fmDateToDisplay(emergency[11]), L"");
    EXPECT_EQ(list(L"MEVREF GET", L"13^3")[0][0], L"3");
    EXPECT_EQ(call(L"MEVREF GET", L"14^3"), L"-1^The refusal 3 does not exist any more."); // another patient's
}

TEST_P(Contract, AsthmaRegistry)
{
    const auto pieces = SplitPieces(call(L"MEVVAST GETREG", L"11"), L"^", 0);
    ASSERT_EQ(pieces.size(), 6u);
    EXPECT_EQ(pieces[1], L"ACTIVE|A");
    for (const std::size_t date : { 2, 3, 4 })
        EXPECT_TRUE(isDate(pieces[date])) << narrow(pieces[date]);
    EXPECT_TRUE(matches(pieces[5], L".+,.+\\|\\d+"));
    EXPECT_EQ(list(L"MEVVAST GETNOTE", L"11").size(), 2u);
    EXPECT_EQ(call(L"MEVVAST GETREG", L"14"), L""); // outside the registry
    EXPECT_EQ(call(L"MEVVAST GETNOTE", L"14"), L"");
    for (const TextView name : { L"MEVVAST GETREG", L"MEVVAST GETNOTE" })
        EXPECT_EQ(call(name, L"999999"), L"-1^There is no patient 999999.");
}

TEST_P(Contract, OnlyItemsOfRefusals)
{
    for (const TextView type : { L"EKG", L"PAP Smear", L"Mammogram" })
        EXPECT_TRUE(matches(call(L"MEVREF REFLIST", type), L"\\d+"));
    EXPECT_EQ(modShared::RpcErrorCode(call(L"MEVREF REFLIST", L"Lab")), 1);
}

TEST_P(Contract, BadValuesAreRefused)
{
    for (const BadSave& save : BadSaves)
        EXPECT_EQ(call(save.call, save.parameter), L"-1^" + Text(save.message)) << narrow(save.parameter);
}

TEST_P(Contract, DeletingWhatIsGoneIsRefused)
{
    for (const TextView name : { L"MEVVIF DEL", L"MEVVELD DEL", L"MEVVAST DEL", L"MEVVTXC DEL", L"MEVREF DEL" })
        EXPECT_EQ(call(name, L"99999999"), L"-1^The record 99999999 does not exist any more.") << narrow(name);
}

TEST_P(Contract, EveryTableCanBeSearched)
{
    for (int number = 0; number < 25; ++number) {
        const LookupTable& table = lookupTable(number);
        if (!table.allowsEmptySearch)
            continue;
        const auto columns = lookupColumns(table);
        for (const auto& line : list(table.call, searchOf(table))) {
            const auto value = [&](std::size_t column) {
                return Piece(joined(line), L"^", static_cast<short>(columns[column].source));
            };
            EXPECT_TRUE(matches(value(0), L"\\d+")) << number;
            EXPECT_NE(value(2), L"") << number; // the name
        }
    }
    EXPECT_EQ(list(L"MEVUTL DICLKUP", L"2^HARTLEY^^^250^^^^.01;.02;.03;.09")[0][0], L"1");
    EXPECT_EQ(modShared::RpcErrorCode(call(L"MEVUTL DICLKUP", L"2^^^^250^^K ^MEVPAT^^.01")), 1); // never executed
}

TEST_P(Contract, VisitReportIsAListOfNarrowLines)
{
    for (const auto& line : list(L"MEVUTL GETRPT", L"1"))
        EXPECT_LE(line[0].size(), 80u);
}

}
}
