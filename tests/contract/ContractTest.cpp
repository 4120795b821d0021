// What the panel relies on in the real server's replies.
#include "lookups/LookupTables.h"
#include "shared/modShared.h"
#include "tests/support/RealServer.h"
#include "tests/support/Replies.h"
#include "tests/support/ScriptedHost.h"
#include "text/Conversions.h"
#include "text/FileManDates.h"

#include <gtest/gtest.h>

#include <regex>

namespace health::test {
namespace {

class Contract : public testing::Test {
protected:
    static Text call(TextView name, TextView parameter)
    {
        static RealSession real;
        return real.session.callText(name, parameter);
    }

    static void expectRefusal(TextView name, TextView parameter, TextView message)
    {
        EXPECT_EQ(call(name, parameter), L"-1^" + Text(message)) << narrow(name) << '(' << narrow(parameter) << ')';
    }
};

struct Reply {
    TextView call;
    std::vector<TextView> parameters; // of patients, and "^" with a record, in the sample data
    TextView example; // which the forms are tested with
    Text line;
};

// Patient 1 is a pregnant woman, 5 an infant, 11 in the asthma registry, 13 has refusals of every kind.
std::vector<Reply> replyTable()
{
    const Text date = L"\\d\\d/\\d\\d/\\d{4}";
    const Text moment = L"\\d{7}(\\.\\d{1,6})?";
    const Text person = L"[^|^]+,[^|^]+\\|\\d+";
    const Text visit = L"\\d+\\^1?\\^" + moment + L"\\|\\d+\\^"; // record, entered here, moment and number
    const Text visitAt = L"\\d+\\^1?\\^" + date + L"@\\d\\d:\\d\\d\\|\\d+\\^";
    const Text answer = L"\\^(YES|NO|)";
    return {
        // The method before the date of delivery.
        { L"MEVREP GET", { L"1", L"1^^1" }, replies::Reproductive,
            L"G\\d+P\\d+LC\\d+SA\\d+TA\\d+\\^" + date + L"\\^[A-Z ]+\\^" + date + L"\\^SONOGRAM\\^" + date },
        { L"MEVBMSR GET", { L"5" }, replies::Birth, L"(\\d+(\\.\\d+)?\\^){4}\\^{5}\\d+(\\^\\d+[DWMY]){3}\\^" + person },
        { L"MEVVIF GET", { L"5", L"^1" }, replies::Feeding, visit + L"[A-Z0-9/& ]+\\|[1-5]" },
        { L"MEVVELD GET", { L"1", L"^1" }, replies::Functional,
            visit + L"((INDEPENDENT|NEEDS HELP|TOTALLY DEPENDENT|)\\^){12}(SAME|IMPROVEMENT|DECLINE|)" + answer },
        { L"MEVVAST GET", { L"1", L"^1" }, replies::Asthma,
            visit + L"[A-Z ]+\\|[1-4](\\^\\d*){3}(" + answer + L"){4}" },
        { L"MEVVAST GETREG", { L"11" }, replies::Registered, L"\\d+\\^ACTIVE\\|A(\\^" + date + L"){3}\\^" + person },
        { L"MEVVTXC GET", { L"1", L"^1" }, replies::Contract,
            visitAt + L"(PAIN\\|P|MENTAL HEALTH\\|M)\\^" + date + L"\\^" + person },
        { L"MEVVER GET", { L"16", L"^1" }, replies::Emergency,
            visit
                + L"[A-Z- ]+\\|[A-Z]\\^[A-Z ]+\\|[A-Z1]+\\^[^^]*\\^[A-Z ]+\\|[A-Z]\\^[^^]*(\\^[A-Z ]+\\|[A-Z]){2}"
                  L"\\^[^^]*\\^("
                + date + L"@\\d\\d:\\d\\d)?\\^\\^[^^]*\\^[^^]*" },
        { L"MEVREF GET", { L"13", L"13^3" }, replies::Refusal,
            L"\\d+\\^\\^\\^[^^]+\\^\\d+\\^[^^]+\\^\\^\\^" + moment + L"\\^1?\\^\\^[^^]*" },
    };
}

TEST_F(Contract, RepliesHaveTheShapeOfThoseThatTheFormsAreTestedWith)
{
    for (const Reply& reply : replyTable()) {
        const std::wregex shape(reply.line);
        const auto expectShape = [&](const Text& whole) {
            const auto lines = SplitPieces(whole, L"\r\n", 0);
            for (const Text& line : lines)
                EXPECT_TRUE(std::regex_match(line, shape) || (line.empty() && lines.size() > 1))
                    << narrow(reply.call) << ": " << narrow(line);
            return lines.size();
        };
        expectShape(Text(reply.example));
        for (const TextView parameter : reply.parameters) {
            const std::size_t lines = expectShape(call(reply.call, parameter));
            EXPECT_TRUE(lines <= 2 || parameter[0] != L'^') << narrow(reply.call); // one record
        }
    }
}

TEST_F(Contract, NothingIsNoError)
{
    for (const TextView name : { L"MEVREP GET", L"MEVVELD GET", L"MEVVAST GETREG", L"MEVVAST GETNOTE" })
        EXPECT_EQ(call(name, L"14"), L"") << narrow(name);
    EXPECT_EQ(call(L"MEVUTL GETPARM", L"Unknown"), L"");
}

// What was typed comes back, and is no error, however often the form saves what it shows.
TEST_F(Contract, ACommentIsNeverReadAsAnError)
{
    RealSession registrar(sharedDataFolder(), L"ROLLINS,COLE");
    const Text guard = L"\u2060";
    for (const auto& [typed, shown] : std::initializer_list<std::pair<Text, Text>> { { L"-3 days", guard + L"-3 days" },
             { L"  -3", guard + L"  -3" }, { L"-.5", guard + L"-.5" }, { L"\t-1", guard + L" -1" },
             { L"-9" + Text(400, L'9'), guard + L"-9" + Text(400, L'9') }, { L"+-3", L"+-3" }, { L"- 3", L"- 3" },
             { L"\u20133", L"\u20133" }, { L"-", L"-" }, { L"x " + guard + L"-3", L"x -3" },
             { L"-4" + Text(3998, L'\u00e9'), guard + L"-4" + Text(3998, L'\u00e9') } }) {
        Text comment = typed;
        for (int times = 0; times < 10; ++times) {
            ASSERT_EQ(registrar.session.callText(L"MEVVAST SETREG", L"17^A^^^^^" + comment), L"1");
            const Text reply = registrar.session.callList(L"MEVVAST GETNOTE", L"17");
            EXPECT_EQ(modShared::RpcErrorCode(reply), 0) << narrow(typed);
            EXPECT_EQ(reply, shown + L"\r\n") << narrow(typed);
            comment = reply.substr(0, reply.size() - 2);
        }
    }
    EXPECT_EQ(registrar.session.callText(L"MEVVAST SETREG", L"17^A^^^^^" + Text(4001, L'x')),
        L"-1^The comment is longer than 4,000 characters.");
}

TEST_F(Contract, ABarInARefusalsCommentHidesNothingInTheList)
{
    EXPECT_EQ(call(L"MEVREF SET", L"^EXAM^1^17^01/02/2026^declined | allergic"), L"1");
    const Text listed = call(L"MEVREF GET", L"17");
    EXPECT_EQ(Piece(listed, L"^", 12), L"declined / allergic\r\n");
    const Text one = call(L"MEVREF GET", L"17^" + Piece(listed, L"^", 1));
    EXPECT_EQ(Piece(one, L"^", 12), L"declined | allergic\r\n");
}

TEST_F(Contract, SecurityHasOnePieceForEachKeyAndTheParameter)
{
    EXPECT_EQ(
        call(L"MEVUTL CHKSEC", L"PROVIDER|MEVZ CAC|MEVZ VIEW ONLY|MEVZ REP HIST EDIT^MEV DISABLE REP HIST EDITING"),
        L"1|1|0|0^0~");
}

TEST_F(Contract, WhatFitsIsTaken)
{
    for (const auto& [name, parameter] : std::initializer_list<std::pair<TextView, TextView>> {
             { L"MEVREP SET", L"1^G3P1LC1SA1TA0^07/24/2026^None^01/25/2026^1^04/30/2027^Sonogram" },
             { L"MEVBMSR SET", L"5^7 2^2^6M^2W^5M^1" }, { L"MEVBMSR SET", L"5^3.23K^2^6M^2W^5M^1" },
             { L"MEVUTL SETPARM", L"RepHist-PedWtOpt^2" } })
        EXPECT_EQ(modShared::RpcErrorCode(call(name, parameter)), 0) << narrow(parameter);
    EXPECT_EQ(Piece(call(L"MEVBMSR GET", L"5"), L"^", 1), L"7"); // pounds, whatever unit was sent
    EXPECT_EQ(call(L"MEVUTL GETPARM", L"RepHist-PedWtOpt"), L"2");
}

// Whatever way of typing a number the forms accept, in one form: no point without a zero before it.
TEST_F(Contract, NumbersComeBackInOneForm)
{
    const auto saved = [](TextView entries) {
        EXPECT_EQ(call(L"MEVBMSR SET", L"6^" + Text(entries) + L"^1"), L"1") << narrow(entries);
        return call(L"MEVBMSR GET", L"6");
    };
    for (const auto& [typed, shown] : std::initializer_list<std::pair<TextView, TextView>> {
             { L"7 2", L"7^2^3.232^3232" }, { L"7 2 ", L"7^2^3.232^3232" }, { L"+7  2.", L"7^2^3.232^3232" },
             { L"7-2", L"7^2^3.232^3232" }, { L"7 1e1", L"7^10^3.459^3459" }, { L"7 .5", L"7^0.5^3.189^3189" },
             { L"0.91K", L"2^0^0.91^910" }, { L".95k", L"2^2^0.95^950" }, { L"3.123456K", L"6^14^3.123^3123" },
             { L"+.32E1K", L"7^1^3.2^3200" }, { L"3200.4G", L"7^1^3.2^3200" }, { L"K", L"^^^" } })
        EXPECT_EQ(saved(Text(typed) + L"^^^^"), Text(shown) + L"^^^^^^^^^^HARTLEY,MARIGOLD ROSE|1") << narrow(typed);
    EXPECT_EQ(saved(L"^1.5^.5M^6 M^ +1e1D"), L"^^^^^^^^^1.5^0.5M^6M^10D^HARTLEY,MARIGOLD ROSE|1");
    EXPECT_EQ(saved(L"^ +2 ^0.50W^.250y^"), L"^^^^^^^^^2^0.5W^0.25Y^^HARTLEY,MARIGOLD ROSE|1");
}

TEST_F(Contract, NoPregnancyIsFiledWithoutItsFlag)
{
    EXPECT_EQ(call(L"MEVREP SET", L"14^G1P0LC0SA0TA0^^^^0^04/30/2027^Sonogram"), L"1");
    EXPECT_EQ(call(L"MEVREP GET", L"14"), L"G1P0LC0SA0TA0^^^^^");
    EXPECT_EQ(call(L"MEVREP SET", L"14^G1P0LC0SA0TA0^01/01/1800^^12/31/2699^1^^Unknown Method"), L"1");
    EXPECT_EQ(call(L"MEVREP GET", L"14"), L"G1P0LC0SA0TA0^01/01/1800^^12/31/2699^UNKNOWN METHOD^");
    EXPECT_EQ(call(L"MEVREP DEL", L"14"), L"1");
}

// With visit 1 of patient 1. The limits and guards of each call have their rows in replies.py.
TEST_F(Contract, WhatDoesNotFitIsRefusedInWords)
{
    struct Case {
        TextView call;
        TextView parameter;
        TextView message;
    };
    static constexpr Case Cases[] = {
        { L"MEVREP SET", L"1^Gx", L"The counts Gx cannot be read." },
        { L"MEVREP SET", L"1^G1P0LC0SA0TA0^02/30/2026^^", L"02/30/2026 is not a date." },
        { L"MEVREP SET", L"1^G1P0LC0SA0TA0^1/5/3026^^", L"1/5/3026 is outside the years 1800 to 2699." },
        { L"MEVREP SET", L"1^G1P0LC0SA0TA0^^^12/31/1799", L"12/31/1799 is outside the years 1800 to 2699." },
        { L"MEVREP SET", L"1^G1P0LC0SA0TA0^^^^1^01/01/2700^", L"01/01/2700 is outside the years 1800 to 2699." },
        { L"MEVREP SET", L"1^G0P0LC0SA0TA0^^^", L"The pregnancy's data are missing: nothing was saved." },
        { L"MEVBMSR SET", L"5^heavy^2^^^^", L"The birth weight heavy cannot be read." },
        { L"MEVBMSR SET", L"5^7 -0.5^2^^^^", L"The birth weight 7 -0.5 cannot be read." },
        { L"MEVBMSR SET", L"5^7--2^2^^^^", L"The birth weight 7--2 cannot be read." },
        { L"MEVBMSR SET", L"5^7 2 1^2^^^^", L"The birth weight 7 2 1 cannot be read." },
        { L"MEVBMSR SET", L"5^3.2^2^^^^", L"The birth weight 3.2 cannot be read." },
        { L"MEVBMSR SET", L"5^1E999K^2^^^^", L"The birth weight 1E999K cannot be read." },
        { L"MEVBMSR SET", L"5^7 2^1234567890\t12345678\u00e9^^^^", // cut before the letter that has two bytes
            L"The birth order 1234567890 12345678 is not possible." },
        { L"MEVBMSR SET", L"5^7 2^0^^^^", L"The birth order 0 is not possible." },
        { L"MEVBMSR SET", L"5^7 2^1^0M^^^", L"The age 0M cannot be read." },
        { L"MEVBMSR SET", L"5^7 2^1^^6^^", L"The age 6 cannot be read." },
        { L"MEVBMSR SET", L"5^7 2^1^^^999D^", L"The age 999D cannot be read." },
        { L"MEVBMSR SET", L"5^7 2^1^^^^999999", L"The mother or guardian is not known." },
        { L"MEVVIF SET", L"^8^9", L"The feeding choice is not known." },
        { L"MEVVELD SET", L"^1^Often^^^^^^^^^^^^^", L"The answer Often is not known." },
        { L"MEVVELD SET", L"^1^^^^^^^^^^^^^Independent^", L"The answer Independent is not known." },
        { L"MEVVELD SET", L"99999999^1^^^^^^^^^^^^^^", L"The record 99999999 does not exist any more." },
        { L"MEVVAST SET", L"^1^5^^^^^^^", L"The severity is not known." },
        { L"MEVVTXC SET", L"^1^P^02/30/2026^1", L"The date initiated is not a date." },
        { L"MEVVTXC SET", L"^1^P^01/02/2700^1", L"01/02/2700 is outside the years 1800 to 2699." },
        { L"MEVVER SET", L"^1^e^^^^^^^^^^", L"The code e is not known." },
        { L"MEVVER SET", L"^1^^^^^^^^^3260230.08^^", L"The departure 3260230.08 is not a date." },
        { L"MEVVER SET", L"^1^^^^^^^^^13260105.08^^", L"01/05/3026 is outside the years 1800 to 2699." },
        { L"MEVVER SET", L"^1^^^^^^^^^^0991231^", L"12/31/1799 is outside the years 1800 to 2699." },
        { L"MEVREF SET", L"^TATTOO^1^1^01/02/2026^", L"The refusal's type is not known." },
        { L"MEVREF SET", L"^EXAM^99999^1^01/02/2026^", L"The refused item is not known." },
        { L"MEVREF SET", L"^EXAM^1^1^^", L"Enter the date of the refusal as mm/dd/yyyy." },
        { L"MEVREF SET", L"^EXAM^1^1^T-1^", L"Enter the date of the refusal as mm/dd/yyyy." },
        { L"MEVREF SET", L"^EXAM^1^1^01/02/1726^", L"01/02/1726 is outside the years 1800 to 2699." },
        { L"MEVREF SET", L"^EXAM^1^14^01/02/2026^no^thanks", L"A text cannot contain a \"^\": nothing was saved." },
        { L"MEVREF SET", L"^EXAM^1^14^01/02/2026^\u00e9", L"The comment must be longer than 1 character." },
        { L"MEVREF REFLIST", L"Lab", L"There is no single item of this type." },
        { L"MEVUTL SETPARM", L"MEVZ^1", L"The parameter MEVZ may not be changed here." },
        { L"MEVUTL DICLKUP", L"2^^^^250^^K ^MEVPAT^^.01", L"This screen is not known." }, // never executed
    };
    for (const Case& c : Cases)
        expectRefusal(c.call, c.parameter, c.message);
    for (const auto& [place, what] : { std::pair(5, L"other means of arrival"), { 7, L"informant" },
             { 9, L"other disposition" }, { 12, L"condition on departure" } })
        expectRefusal(L"MEVVER SET",
            L"^1" + Text(static_cast<std::size_t>(place) - 1, L'^') + Text(201, L'x')
                + Text(13 - static_cast<std::size_t>(place) - 1, L'^'),
            L"The " + Text(what) + L" is longer than 200 characters.");
}

TEST_F(Contract, WhatIsNotThereIsRefusedInWords)
{
    for (const TextView name : { L"MEVREP GET", L"MEVBMSR GET", L"MEVVIF GET", L"MEVVELD GET", L"MEVVAST GET",
             L"MEVVTXC GET", L"MEVREF GET", L"MEVVAST GETREG", L"MEVVAST GETNOTE" }) {
        expectRefusal(name, L"999999", L"There is no patient 999999.");
        expectRefusal(name, L"1\"_$H", L"There is no patient 1\"_$H.");
    }
    const TextView gone = L"The record 99999999 does not exist any more.";
    for (const TextView name : { L"MEVVIF", L"MEVVELD", L"MEVVAST", L"MEVVTXC", L"MEVVER" }) {
        expectRefusal(Text(name) + L" GET", L"^99999999", gone);
        expectRefusal(Text(name) + L" DEL", L"99999999", gone);
    }
    expectRefusal(L"MEVREF DEL", L"99999999", gone);
    expectRefusal(L"MEVVIF SET", L"99999999^8^1", gone);
}

TEST_F(Contract, EveryTableCanBeSearched)
{
    for (int number = 0; number < 25; ++number) {
        const LookupTable& table = lookupTable(number);
        if (!table.allowsEmptySearch)
            continue;
        const Text reply = call(table.call,
            Text(table.file) + L"^^^^250^" + Text(table.index) + L"^" + Text(table.screen) + L"^^"
                + Text(table.fields));
        const auto columns = lookupColumns(table);
        ASSERT_FALSE(replyLines(reply).empty()) << number;
        for (const TextView line : replyLines(reply)) {
            const auto value = [&](std::size_t column) {
                return Piece(line, L"^", static_cast<short>(columns[column].source));
            };
            EXPECT_TRUE(std::regex_match(value(0), std::wregex(L"\\d+"))) << number;
            EXPECT_NE(value(2), L"") << number; // the name
        }
    }
    EXPECT_TRUE(call(L"MEVUTL DICLKUP", L"2^HARTLEY^^^250^^^^.01;.02;.03;.09").starts_with(L"1^"));
    for (const TextView type : { L"EKG", L"PAP Smear", L"Mammogram" }) // which have one item each
        EXPECT_TRUE(std::regex_match(call(L"MEVREF REFLIST", type), std::wregex(L"\\d+")));
}

// The whole of the story patients that a search finds, in its order; the other patients have made-up names that may
// change with the generator.
TEST_F(Contract, PatientsAreFoundAsTheyAreTyped)
{
    const Text born = FMDateToDate(Piece(call(L"MEVHOST PATIENT", L"14"), L"^", 4), TimePart::Without);
    const Text digits = born.substr(0, 2) + born.substr(3, 2) + born.substr(6);
    const Text iso = born.substr(6) + L"-" + born.substr(0, 2) + L"-" + born.substr(3, 2);
    const auto found = [](TextView text) {
        std::vector<long> numbers;
        const Text reply = call(L"MEVHOST PATIENTS", text);
        for (const TextView line : replyLines(reply)) {
            const long number = static_cast<long>(leadingNumber(line));
            if (number < 20)
                numbers.push_back(number);
        }
        return numbers;
    };
    const std::pair<Text, std::vector<long>> cases[] = { { L"QUIET,IRIS", { 14 } }, { L"  quiet , iris ", { 14 } },
        { L"quiet, i", { 14 } }, { L"iris", { 14 } }, { L"Iris Quiet", { 14 } }, { L"quiet iris", { 14 } },
        { L" 14 ", { 14 } }, { born, { 14 } }, { digits, { 14 } }, { iso, { 14 } }, { L"quietly", {} },
        { L"ferreira,luc", { 11 } }, { L"FERREIRA, L\u00dac", { 11 } }, { L"f\u00ebrre\u00efra", { 11, 12 } },
        { L"Lu\u0301cia", { 11 } }, { L"munoz-garc\u00eda,ang", { 18 } }, { L"munoz garcia", { 18 } },
        { L"\u00e1ngel", { 18 } }, { L"marigold", { 1 } }, { L"rose", { 10, 1 } }, // a surname before a given name
        { L"maximilian", { 17 } }, { L"14/45/2006", {} } };
    for (const auto& [text, numbers] : cases)
        EXPECT_EQ(found(text), numbers) << narrow(text);
    EXPECT_EQ(replyLines(call(L"MEVHOST PATIENTS", L"")).size(), 250u);
    // The searches of the lookup dialog by the same rules.
    for (const auto& [name, text, line] : std::initializer_list<std::array<TextView, 3>> {
             { L"MEVUTL DICLKUP", L"2^ Pemberton , maisie ", L"6^PEMBERTON,MAISIE^" },
             { L"MEVUTL DICLKUP", L"2^FERREIRA,TOM\u00c1S", L"12^" }, { L"MEVUTL DICLKUP", L"2^ferreira, luc", L"11^" },
             { L"MEVUTL DICLKUP", L"60^ Lipid  panel ", L"4^LIPID PANEL^" },
             { L"MEVICDLK ICDLKUP", L"^ \u00e1sthma ,moderate ", L"ASTHMA, MODERATE PERSISTENT^" } })
        EXPECT_TRUE(call(name, Text(text) + L"^^^250^^^^.01").starts_with(line)) << narrow(text);
}

TEST_F(Contract, VisitReportIsAListOfNarrowLines)
{
    const Text report = call(L"MEVUTL GETRPT", L"1");
    EXPECT_FALSE(replyLines(report).empty());
    for (const TextView line : replyLines(report))
        EXPECT_LE(line.size(), 80u);
}

}
}
