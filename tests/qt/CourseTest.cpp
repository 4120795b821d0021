#include "qt/CourseView.h"
#include "qt/course/CourseOf.h"
#include "qt/course/ValueLabels.h"
#include "tests/support/MadeRecords.h"

#include <QApplication>
#include <QClipboard>
#include <QMimeData>
#include <QPainter>
#include <QSignalSpy>
#include <QTableView>
#include <QTest>

#include <gtest/gtest.h>

#include <random>

namespace health::test {
namespace {

std::vector<ListedRecord> asthmaRecords()
{
    return madeRecords(RecordTypeNumber::Asthma,
        { L"3^^3261121.0815|8^MILD INTERMITTENT|1^93^49^420", L"2^^3260922|7^^61^^4x",
            L"1^^3251201|4^SEVERE PERSISTENT|4^70^46^330" });
}

std::unique_ptr<CoursePicture> make(const std::vector<ListedRecord>& records, int selected, TextView due = {})
{
    return courseOf(
        { .records = records, .selected = selected, .now = momentOf(2026, 11, 21), .registryDue = Text(due) });
}

QStringList pointTexts(const CoursePicture& picture, const CourseLook& look)
{
    QStringList texts;
    for (const CoursePoint& point : picture.points({ 0, 0, 600, picture.heightFor(600, look) }, look))
        texts.append(point.text);
    return texts;
}

TEST(ValueLabels, NeverOverlapAndKeepTheNeededOnes)
{
    std::mt19937 random(7);
    const QRect room(0, 0, 500, 80);
    for (const int count : { 1, 2, 10, 100, 500 }) {
        QList<QPoint> curve;
        for (int i = 0; i < count; ++i)
            curve.append(QPoint(10 + i * 480 / count, 20 + static_cast<int>(random() % 40)));
        QList<LabelledPoint> wanted;
        for (qsizetype i = 0; i < count; ++i)
            wanted.append({ QStringLiteral("420"), i, false, i == 0 || i + 1 == count, 4 });
        const QList<ValueLabel> labels = placedLabels(wanted, curve, room, QApplication::font());
        const auto has = [&](qsizetype point) {
            return std::any_of(
                labels.begin(), labels.end(), [&](const ValueLabel& label) { return label.point == point; });
        };
        EXPECT_TRUE(has(0)) << count;
        EXPECT_TRUE(has(count - 1)) << count;
        for (const ValueLabel& label : labels) {
            EXPECT_TRUE(room.contains(label.place));
            EXPECT_EQ(std::count_if(labels.begin(), labels.end(),
                          [&](const ValueLabel& other) { return other.place.intersects(label.place); }),
                1);
        }
    }
}

TEST(AsthmaPicture, HasAPointForEachValueAndNoneForAGap)
{
    const auto picture = make(asthmaRecords(), 0);
    ASSERT_TRUE(picture);
    EXPECT_EQ(pointTexts(*picture, { QApplication::font(), QApplication::palette() }),
        (QStringList { "FEV 1 on 12/01/2025: 70", QStringLiteral("FEV 1 on 09/22/2026: 61 (\u22129)"),
            "FEV 1 on 11/21/2026 08:15: 93 (+32)", "FEF 25-75 on 12/01/2025: 46", "FEF 25-75 on 11/21/2026 08:15: 49",
            "PEF on 12/01/2025: 330", "PEF on 11/21/2026 08:15: 420", "Severity on 12/01/2025: Severe Persistent",
            "Severity on 11/21/2026 08:15: Mild Intermittent" }));
    EXPECT_FALSE(make(asthmaRecords(), -1));
    EXPECT_FALSE(make(madeRecords(RecordTypeNumber::Asthma, { L"1^^|4^^70" }), 0)); // no date
}

// Depends on the look alone: paper has no widget and another size of dots.
TEST(AsthmaPicture, DrawsWithinItsPlaceInEverySize)
{
    for (const int pixels : { 13, 26, 100 }) {
        QFont font = QApplication::font();
        font.setPixelSize(pixels);
        QPalette paper(Qt::black, Qt::white);
        paper.setColor(QPalette::Base, Qt::white);
        const CourseLook look { font, paper };
        for (const int ems : { 22, 40, 80 }) {
            const auto picture = make(asthmaRecords(), 1, L"01/10/2027");
            const QRect place(pixels, pixels, ems * pixels, picture->heightFor(ems * pixels, look));
            QImage image(place.adjusted(0, 0, 2 * pixels, 2 * pixels).size(), QImage::Format_RGB32);
            image.fill(Qt::white);
            QPainter painter(&image);
            picture->draw(painter, place, look);
            painter.end();
            EXPECT_NE(image.copy(place), [&] {
                QImage empty = image.copy(place);
                empty.fill(Qt::white);
                return empty;
            }());
            painter.begin(&image);
            painter.fillRect(place, Qt::white);
            painter.end();
            QImage empty = image;
            empty.fill(Qt::white);
            EXPECT_EQ(image, empty) << pixels << " " << ems; // nothing lies outside
            for (const CoursePoint& point : picture->points(place, look))
                EXPECT_TRUE(place.contains(point.place.center()));
        }
    }
}

class CourseViewTest : public testing::Test {
protected:
    CourseViewTest()
        : view(nullptr)
        , chosen(&view, &CourseView::recordChosen)
    {
        view.resize(600, 300);
        view.setPicture(make(asthmaRecords(), 0));
        view.show();
        canvas = view.findChild<QWidget*>();
    }

    CourseView view;
    QSignalSpy chosen;
    QWidget* canvas;
};

TEST_F(CourseViewTest, KeysReadValuesAndChooseRecords)
{
    QTest::keyClick(canvas, Qt::Key_Return);
    EXPECT_TRUE(chosen.empty()); // no value is read
    QTest::keyClick(canvas, Qt::Key_Right);
    QTest::keyClick(canvas, Qt::Key_Right);
    QTest::keyClick(canvas, Qt::Key_Return);
    QTest::keyClick(canvas, Qt::Key_Home);
    QTest::keyClick(canvas, Qt::Key_Down); // FEF 25-75 of the same record
    QTest::keyClick(canvas, Qt::Key_Right); // across its gap
    QTest::keyClick(canvas, Qt::Key_Return);
    QTest::keyClick(canvas, Qt::Key_End);
    QTest::keyClick(canvas, Qt::Key_Right); // stays at the end
    QTest::keyClick(canvas, Qt::Key_Left);
    QTest::keyClick(canvas, Qt::Key_Return);
    ASSERT_EQ(chosen.size(), 3);
    EXPECT_EQ(chosen[0][0], 1);
    EXPECT_EQ(chosen[1][0], 0);
    EXPECT_EQ(chosen[2][0], 2);
}

TEST_F(CourseViewTest, AClickChoosesTheRecordOfItsPoint)
{
    const auto points = view.picture()->points(canvas->rect(), view.look());
    QTest::mouseClick(canvas, Qt::LeftButton, {}, points[0].place.center());
    QTest::mouseClick(canvas, Qt::LeftButton, {}, QPoint(1, 1));
    ASSERT_EQ(chosen.size(), 1);
    EXPECT_EQ(chosen[0][0], 2);
}

TEST_F(CourseViewTest, CopiesThePictureAndTheTable)
{
    QTest::keyClick(canvas, Qt::Key_C, Qt::ControlModifier);
    const QMimeData& copied = *QApplication::clipboard()->mimeData();
    EXPECT_TRUE(copied.hasImage());
    const QString table = QStringLiteral("Date\tFEV 1\tFEF 25-75\tPEF\tSeverity\n"
                                         "12/01/2025\t70\t46\t330\tSevere Persistent\n"
                                         "09/22/2026\t61\t\t4x\t\n"
                                         "11/21/2026 08:15\t93\t49\t420\tMild Intermittent");
    EXPECT_EQ(copied.text(), table);
    view.showAsTable(true);
    auto& shown = *view.findChild<QTableView*>();
    EXPECT_TRUE(shown.isVisible());
    EXPECT_EQ(shown.model()->rowCount(), 3);
    EXPECT_EQ(shown.model()->index(1, 3).data(), "4x"); // the table shows what was sent
    QTest::keyClick(&shown, Qt::Key_C, Qt::ControlModifier);
    EXPECT_FALSE(QApplication::clipboard()->mimeData()->hasImage());
    EXPECT_EQ(QApplication::clipboard()->text(), table);
    QTest::keyClick(&shown, Qt::Key_Escape);
    EXPECT_FALSE(view.isTable());
}

}
}
