// The list and the course on paper, from the panel's action to the host's pages.
#include "host/report/PrintoutPages.h"
#include "qt/print/FilterWords.h"
#include "qt/print/FlowingPrintout.h"
#include "tests/support/PanelFixture.h"
#include "tests/support/TextPrinter.h"

#include <QDialog>
#include <QLabel>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

namespace health::test {
namespace {

using namespace Qt::StringLiterals;

class Printing : public PanelFixture {
protected:
    void open()
    {
        showPanel(12);
        host.print->onPages = [this](Printout& printout) {
            PrintoutPages pages(
                printout, { { "Hartley, Marigold Rose", "Number 12   Female   Age 29 years" }, "Sorrel, Ada" });
            title = pages.title();
            spoken = pages.spokenText();
            const int painted = pages.paint(printer);
            EXPECT_EQ(painted, printer.pages().size());
        };
    }
    void refusals(int count)
    {
        Text lines;
        for (int i = 1; i <= count; ++i)
            lines += std::to_wstring(i) + L"^^^EXAM^2^EYE EXAM " + std::to_wstring(i) + L"^^^3260103^^^Comment number "
                + std::to_wstring(i) + L"\r\n";
        host.session->reply(L"MEVREF GET", lines);
    }
    QAction* action(const QString& text) const
    {
        for (QAction* const action : view->actions()) {
            if (action->text().remove(u'&') == text)
                return action;
        }
        return nullptr;
    }

    TextPrinter printer;
    QString title;
    QString spoken;
};

TEST_F(Printing, EachRowOnceAndTheHeadingOnEachPage)
{
    refusals(90);
    open();
    const Transcript calls = host.calls();
    action("Print List...")->trigger();
    EXPECT_EQ(title, "Personal Health Records");
    const QStringList pages = printer.pages();
    ASSERT_GT(pages.size(), 1);
    for (qsizetype page = 0; page < pages.size(); ++page) {
        for (const QString& text : { u"PersonalHealthRecords"_s, u"90records"_s, u"Hartley,MarigoldRose"_s,
                 u"Number12FemaleAge29years"_s, u"bySorrel,Ada"_s, u"Page%1of%2"_s.arg(page + 1).arg(pages.size()),
                 QDate::currentDate().toString("MM/dd/yyyy") })
            EXPECT_EQ(pages[page].count(text), 1) << page << ' ' << text.toStdString();
    }
    const QString all = pages.join(QString());
    for (int i = 1; i <= 90; ++i) {
        EXPECT_TRUE(all.contains(u"Commentnumber%1"_s.arg(i))) << i;
        EXPECT_TRUE(spoken.contains(u"Comment number %1\n"_s.arg(i))) << i;
    }
    EXPECT_EQ(all.count(u"Commentnumber"), 90);
    EXPECT_EQ(host.calls(), calls); // printing reads the list
}

TEST_F(Printing, NothingIsDrawnOutsideThePage)
{
    host.session->reply(L"MEVREF GET",
        L"1^^^EXAM^2^EYE EXAM^^^3260103^^^" + Text(190, L'W') + L"\r\n2^^^EXAM^2^EYE EXAM^^^3260103^^^short\r\n");
    open();
    action("Print List...")->trigger();
    const QRectF page(QPointF(), printer.pageRect(QPrinter::DevicePixel).size());
    for (const auto& words : printer.words()) {
        for (const TextEngine::Word& word : words)
            EXPECT_TRUE(page.contains(word.place)) << word.text.toStdString();
    }
    const QString text = printer.pages().join(QString());
    EXPECT_EQ(text.count(u'W'), 190); // a field that is wider than the page wraps
}

TEST_F(Printing, MarksAreInWords)
{
    host.encounter->visit = 81;
    host.session->reply(L"MEVVELD GET", L"3^^3260310.0815|81^SAME\r\n4^^3260309.0815|80^SAME\r\n");
    host.session->reply(L"MEVREF GET", L"5^^^EXAM^^X^^^3260310^1\r\n");
    open();
    action("Print List...")->trigger();
    const QStringList lines = spoken.split(u'\n', Qt::SkipEmptyParts).mid(3);
    ASSERT_EQ(lines.size(), 3);
    EXPECT_TRUE(lines[0].startsWith("Functional Status: 03/10/2026 08:15") && lines[0].endsWith(" (Current visit)"));
    EXPECT_FALSE(lines[1].contains(u'('));
    EXPECT_TRUE(lines[2].endsWith(" (Locked)"));
    const QString page = printer.pages().join(QString());
    EXPECT_EQ(page.count("Currentvisit"), 1);
    EXPECT_EQ(page.count("Locked"), 1);
}

TEST_F(Printing, CommandsAreGreyWithoutAnythingToPrint)
{
    open();
    EXPECT_FALSE(action("Print List...")->isEnabled());
    EXPECT_EQ(action("Print List...")->toolTip(), "The list shows no records.");
    EXPECT_FALSE(action("Print Course...")->isEnabled());
    refusals(2);
    host.session->push(L"REFRESH");
    EXPECT_TRUE(action("Print List...")->isEnabled());
    EXPECT_EQ(action("Print Course...")->toolTip(), "No record is selected.");
    control.fgData.choose(0);
    EXPECT_TRUE(action("Print Course...")->isEnabled());
}

TEST_F(Printing, CourseHasTheRecordInFull)
{
    refusals(2);
    open();
    control.fgData.choose(1);
    action("Print Course...")->trigger();
    const QString text = printer.pages().join(QString());
    for (const QString& part : { u"EYEEXAM2"_s, u"Commentnumber2"_s, u"Hartley,MarigoldRose"_s, u"Page1of1"_s })
        EXPECT_TRUE(text.contains(part)) << part.toStdString();
}

TEST_F(Printing, CourseOfAnInfantHasTheAges)
{
    host.patient->patientAge = L"0";
    host.patient->born = L"2025-12-01";
    host.session->reply(L"MEVVIF GET", L"1^^3260310|81^MOSTLY FORMULA|4\r\n");
    open();
    control.fgData.choose(0);
    action("Print Course...")->trigger();
    EXPECT_TRUE(printer.pages().join(QString()).contains(u"3months"_s));
}

TEST_F(Printing, HostThatCannotShowPagesIsSaidToTheUser)
{
    refusals(1);
    open();
    host.print->onPages = nullptr;
    QString said;
    QTimer::singleShot(50, view.get(), [&] {
        if (auto* const box = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
            for (const QLabel* const label : box->findChildren<QLabel*>())
                said += label->text();
            box->reject();
        }
    });
    action("Print List...")->trigger();
    EXPECT_TRUE(said.contains(u"This program cannot show or print Personal Health Records."_s)) << said.toStdString();
}

TEST(FilterWords, NameEachPartOfTheFilter)
{
    RecordFilter filter {
        .words = L"  mild  ", .kinds = { RecordTypeNumber::FunctionalStatus, RecordTypeNumber::Asthma }, .year = 2026
    };
    EXPECT_EQ(filterInWords(filter), "\"mild\", Functional Status, Asthma Status, 2026");
    filter.words = L" ";
    filter.kinds.clear();
    EXPECT_EQ(filterInWords(filter), "2026");
    filter.year.reset();
    EXPECT_EQ(filterInWords(filter), "");
}

// Blocks of given heights, a line being 10.
class Blocks : public FlowingPrintout {
public:
    explicit Blocks(std::vector<Block> blocks)
        : m_blocks(std::move(blocks))
    {
    }
    Text title() const override { return {}; }
    Text plainText() const override { return {}; }

    // The blocks that each page draws.
    std::vector<std::vector<std::size_t>> pages(int height)
    {
        const int count = layOut(100, height);
        QImage image(10, 10, QImage::Format_RGB32);
        QPainter painter(&image);
        std::vector<std::vector<std::size_t>> pages;
        for (int page = 0; page < count; ++page) {
            m_drawn.clear();
            draw(painter, page);
            pages.push_back(m_drawn);
        }
        return pages;
    }

private:
    std::vector<Block> blocks(double, double) override { return m_blocks; }
    void drawBlock(QPainter&, std::size_t block, bool) const override { m_drawn.push_back(block); }

    std::vector<Block> m_blocks;
    mutable std::vector<std::size_t> m_drawn;
};

TEST(FlowingPrintout, TearsOnlyBlocksThatAreHigherThanAPage)
{
    using Pages = std::vector<std::vector<std::size_t>>;
    EXPECT_EQ(Blocks({}).pages(1000), Pages { {} });
    EXPECT_EQ(Blocks({ { 400 }, { 600 }, { 1 } }).pages(1000), (Pages { { 0, 1 }, { 2 } }));
    EXPECT_EQ(Blocks({ { 400 }, { 601 }, { 300 } }).pages(1000), (Pages { { 0 }, { 1, 2 } }));
    EXPECT_EQ(Blocks({ { 10 }, { 2500 }, { 10 } }).pages(1000), (Pages { { 0 }, { 1 }, { 1 }, { 1, 2 } }));
    EXPECT_EQ(Blocks({ { 800 }, { 150, true }, { 100 } }).pages(1000), (Pages { { 0 }, { 1, 2 } }));
}

}
}
