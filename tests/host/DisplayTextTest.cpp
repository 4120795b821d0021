#include "host/framework/DisplayText.h"
#include "api/Failure.h"
#include "host/report/ReportPages.h"
#include "host/session/Replies.h"
#include "tests/support/ScriptedHost.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <signal.h>
#include <sys/resource.h>

namespace health::test {
namespace {

TEST(DisplayText, Names)
{
    EXPECT_EQ(displayName("O'BRIEN,MARY-ANN J"), "O'Brien, Mary-Ann J");
    EXPECT_EQ(displayName("MUÑOZ-GARCÍA,ÁNGEL"), "Muñoz-García, Ángel");
}

TEST(DisplayText, DatesAndAges)
{
    EXPECT_EQ(displayDate("3261121.0815"), "11/21/2026 08:15");
    EXPECT_EQ(displayDate("3261121"), "11/21/2026");
    EXPECT_EQ(displayDate("junk"), QString());
    const QDate today(2026, 3, 15);
    const std::pair<QDate, const char*> ages[] = { { QDate(2026, 3, 14), "1 day" }, { QDate(2026, 1, 16), "58 days" },
        { QDate(2025, 11, 15), "4 months" }, { QDate(2024, 3, 16), "23 months" }, { QDate(2024, 3, 15), "2 years" },
        { QDate(1940, 3, 16), "85 years" }, { QDate(2026, 3, 16), "" }, { QDate(), "" } };
    for (const auto& [birth, age] : ages)
        EXPECT_EQ(displayAge(birth, today), QLatin1String(age));
}

TEST(DisplayText, ServerErrorsAreFailures)
{
    EXPECT_EQ(linesOf(L"1^A\r\n2^B\r\n").size(), 2);
    EXPECT_TRUE(linesOf(L"").isEmpty());
    EXPECT_THROW(linesOf(L"-1^No."), Failure);
}

TEST(ReportPages, LinesAreBrokenAtTheWidth)
{
    Report report;
    report.text = QString(170, u'x') + QStringLiteral("\r\n\r\nend\r\n");
    const ReportPages pages(report, {});
    EXPECT_EQ(
        pages.lines(), (QStringList { QString(80, u'x'), QString(80, u'x'), QString(10, u'x'), QString(), "end" }));
}

TEST(ReportPages, HeadingNamesThePatientAndTheVisit)
{
    const ReportPeople people { { "Núñez, Lía M", "Number 7   Female   Age 3 years" }, "Sorrel, Ada" };
    Report report;
    report.text = "VISIT 4\r\nPatient:  NÚÑEZ,LÍA M\r\nDate:     11/21/2026 08:15\r\nLocation: PEDIATRIC CLINIC\r\n";
    EXPECT_EQ(ReportPages(report, people).patient(),
        people.patient + QStringList("Visit 11/21/2026 08:15, PEDIATRIC CLINIC"));
    report.text = "LETTER\r\nDate: 11/21/2026\r\n";
    EXPECT_EQ(ReportPages(report, people).patient(), people.patient);
    report.patientHeading = false;
    EXPECT_TRUE(ReportPages(report, people).patient().isEmpty());
}

// A line for each row: heading "#text", pair "caption|value", else the line itself.
std::string setAs(const QString& text)
{
    QStringList rows;
    for (const ReportRow& row : reportRows(text.split('\n'))) {
        const bool isPair = row.kind == ReportRow::Kind::Pair;
        const QString mark = row.kind == ReportRow::Kind::Heading ? "#" : "";
        rows.append(isPair ? row.caption + '|' + row.text : mark + row.text);
    }
    return rows.join('\n').toStdString();
}

TEST(ReportText, OnlyGroupsOfPairsLeaveTheFixedFont)
{
    EXPECT_EQ(setAs("VISIT 1\nPatient:   HARTLEY,MARIGOLD  (number 1)\nProvider:  \n\nASTHMA\n  Severity       MILD\n"),
        "#VISIT 1\nPatient:|HARTLEY,MARIGOLD  (number 1)\nProvider:|\n\n#ASTHMA\nSeverity|MILD\n");
    // Tables, running text, long lines and capital words inside a group stay as they are.
    for (const char* text : { "Drug      Dose    Days\nIRON      5 mg    10", "Name      Age\nSMITH     30\nsee below",
             "He said:  no.\nNOTHING MORE", "ALONE", "Date: 1/2/2026  Time: 10:00", "a\nHEADING\nb" })
        EXPECT_EQ(setAs(text), text);
    const std::string comment = "Comment   " + std::string(70, 'x') + "\nREST OF IT";
    EXPECT_EQ(setAs(comment.c_str()), comment);
}

TEST(ReportPages, PagesBreakAtTheirHeightAndAtFormFeeds)
{
    Report report;
    report.text = "a\r\nb\r\nc\r\n\fd\r\n";
    QStringList pages;
    for (const QList<ReportRow>& page : ReportPages(report, {}).pages(2)) {
        pages.append(QString());
        for (const ReportRow& row : page)
            pages.last() += row.text;
    }
    EXPECT_EQ(pages, (QStringList { "ab", "c", "d" }));
}

TEST(ReportPages, PdfIsWrittenWithoutAPrinter)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("report.pdf");
    Report report;
    report.title = "Visit Detail";
    for (int line = 0; line < 300; ++line)
        report.text += "line\r\n";
    const ReportPages pages(report, {});
    QFile file(path);
    // Readable by the user alone, also if the replaced file was not.
    for (const auto others : { QFile::Permissions(), QFile::Permissions(QFile::ReadGroup | QFile::ReadOther) }) {
        file.setPermissions(file.permissions() | others);
        pages.savePdf(path);
        EXPECT_FALSE(
            file.permissions() & (QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther));
    }
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    EXPECT_TRUE(bytes.startsWith("%PDF"));
    EXPECT_GE(bytes.count("/Type /Page\n"), 4);
    EXPECT_THROW(pages.savePdf(folder.filePath("missing/report.pdf")), Failure);

    // On a full disk no partial file remains.
    ::signal(SIGXFSZ, SIG_IGN);
    rlimit before {};
    ::getrlimit(RLIMIT_FSIZE, &before);
    const rlimit small { 4096, before.rlim_max };
    ::setrlimit(RLIMIT_FSIZE, &small);
    EXPECT_THROW(pages.savePdf(path), Failure);
    ::setrlimit(RLIMIT_FSIZE, &before);
    EXPECT_FALSE(QFile::exists(path));
}

}
}
