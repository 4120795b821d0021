// What the panel relies on in the real server's replies; replies.py has the guards of each call.
#include "editors/BirthWeight.h"
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

// The birth measurements' form shows the other units of a weight before the server has converted it.
TEST_F(Contract, WeightsAreConvertedAsTheFormShowsThem)
{
    constexpr TextView patient = L"14"; // who has no birth measurements
    for (const TextView entry : { L"7 2", L"7-2", L"07 02.50", L"1.5 0", L"24 16", L"40 2", L"99 99", L"100 0", L"3.2K",
             L"0.98K", L"4.0005K", L"8.1235K", L"9.9995K", L"99.99K", L"100K", L".5K", L"980G", L"907.5G", L"1000.5G",
             L"3232G", L"453G", L"100000G", L"7", L"K", L"3.2 K" }) {
        call(L"MEVBMSR SET", Text(patient) + L"^^^^^^");
        call(L"MEVBMSR SET", Text(patient) + L"^" + Text(entry) + L"^^^^^");
        const Text filed = call(L"MEVBMSR GET", patient);
        const LinePieces pieces(filed);
        const BirthWeight weight = birthWeight(entry).value_or(BirthWeight {});
        EXPECT_EQ(weight.pounds + L" " + weight.ounces + L" " + weight.kilograms + L" " + weight.grams,
            Text(pieces[1]) + L" " + Text(pieces[2]) + L" " + Text(pieces[3]) + L" " + Text(pieces[4]))
            << narrow(entry);
    }
    call(L"MEVBMSR DEL", patient);
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
