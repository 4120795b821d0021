// The real server alone: what the panel lists from it, and which faults it survives.
#include "control/GridColumns.h"
#include "control/kalmevRepHistCtrl.h"
#include "tests/support/RealPanel.h"

namespace health::test {
namespace {

TEST(Server, StoryPatientsAreListed)
{
    struct Case {
        long number;
        TextView sex;
        TextView age;
        std::map<Text, int> rows; // by label
    };
    const Case cases[] = {
        { 1, L"F", L"29",
            { { L"Reproductive", 1 }, { L"Functional Status", 1 }, { L"Asthma Status", 2 }, { L"Tx Contract", 1 },
                { L"Refusal", 1 } } },
        { 5, L"M", L"0", { { L"Birth Measurements", 1 }, { L"Infant Feeding", 2 } } },
        { 9, L"M", L"7", {} }, // seven today: no longer listed
        { 10, L"F", L"84", { { L"Functional Status", 14 } } }, { 13, L"M", L"61", { { L"Refusal", 10 } } },
        { 14, L"F", L"40", {} }, { 15, L"F", L"91", { { L"Functional Status", 5000 } } },
        { 16, L"M", L"22", {} }, // emergency visits are not listed
    };
    RealSession real;
    for (const Case& patient : cases) {
        RealPanel panel(real.session, patient.number, patient.sex, patient.age);
        kalmevRepHistCtrl control(panel.shared, panel);
        control.UserControl_Initialize();
        control.UserControl_Show();
        std::map<Text, int> rows;
        for (int row = 0; row < control.fgData.rowCount(); ++row)
            ++rows[Text(control.fgData.text(row, GridColumn::Label))];
        EXPECT_EQ(rows, patient.rows) << patient.number;
        EXPECT_TRUE(panel.objects.boxes().empty()) << patient.number;
    }
}

TEST(Server, BadFramesGetAnAnswerAndTheSessionLivesOn)
{
    RealSession warm; // creates the database
    const QByteArray token(32, 'a');
    const QByteArray signOn = framed("1\nMEVHOST SIGNON\n" + token + "^SORREL,ADA");
    const QByteArray good = framed("9\nMEVHOST PATIENT\n14");
    const std::pair<QByteArray, QByteArray> cases[] = {
        { framed(""), framed("F0\nThe request has no number.") },
        { framed("x\nMEVREP GET\n1"), framed("F0\nThe request has no number.") },
        { framed("2\n\n"), framed("F2\nThe request has no name.") },
        { framed("2\nMEVREP GET"), framed("F2\nThe request has no name.") },
        { framed("2 SAVE\nMEVREP GET\n1"), framed("F2\nThe request's purpose is not known.") },
        { framed("2\nHALT\n"), framed("F2\nThe server has no call named 'HALT'.") },
        { framed("2\nMEVREP GET\n" + QByteArray(1200000, 'x')),
            framed("R2\n-1^The request is longer than 1,000,000 bytes.") },
        { framed("2\nMEVREF SET\n^EXAM^1^2^01/02/2026^" + QByteArray(999966, '-')), // the longest request
            framed("R2\n-1^The call is longer than 10,000 bytes: nothing was done.") },
        { framed("2\nMEVREF SET\n^EXAM^1^2^01/02/2026^" + QByteArray(9979, '-')), // the longest of this call
            framed("R2\n-1^The comment is longer than 200 characters.") },
        { framed("2\nMEVREF SET\n^EXAM^1^2^01/02/2026^" + QByteArray(9980, '-')),
            framed("R2\n-1^The call is longer than 10,000 bytes: nothing was done.") },
        { framed("2\nMEVREP GET\n\xff\xfe^"), framed("R2\n-1^There is no patient \xff\xfe.") },
        { framed("2\nMEVHOST KEYS\n" + QByteArray(999, '^')), framed("R2\n" + QByteArray("0^").repeated(999) + "0") },
        { framed("2\nMEVHOST KEYS\n" + QByteArray(90000, '^')), framed("R2\n-1^These are too many keys.") },
    };
    for (const auto& [request, answer] : cases) {
        const QByteArray answers = rawExchange(signOn + request + good);
        EXPECT_TRUE(answers.contains(answer))
            << request.left(40).toStdString() << " -> " << answers.left(200).toStdString();
        EXPECT_TRUE(answers.contains("R9\n14^QUIET,IRIS")) << request.left(40).toStdString();
    }
    // Out of step: a failure, or nothing where the stream ends inside a frame.
    for (const QByteArray& stream : { QByteArray("GARBAGE!"), QByteArray("-0000001R"),
             QByteArray("1E5\0\0\0\0\0xx", 10), QByteArray("00000003") + "1\n", QByteArray(5000, '^'),
             QByteArray("$ZVERSION"), QByteArray(200000, '\xff'), QByteArray("0000") }) {
        const QByteArray answer = rawExchange(stream);
        const bool torn = stream.startsWith("0000");
        EXPECT_EQ(answer, torn ? QByteArray() : framed("F0\nThe request's length is not eight digits."))
            << stream.left(20).toStdString();
    }
}

}
}
