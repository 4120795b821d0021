// The pictures of all kinds but asthma.
#include "qt/course/CourseOf.h"
#include "tests/support/MadeRecords.h"

#include <QGuiApplication>
#include <QPainter>
#include <QSet>

#include <gtest/gtest.h>

namespace health::test {
namespace {

using enum RecordTypeNumber;

const Moment Today = momentOf(2026, 11, 21, 14, 31);

struct Kind {
    const char* name;
    std::vector<ListedRecord> records;
    int selected;
};

std::vector<ListedRecord> assessments()
{
    return madeRecords(FunctionalStatus,
        { L"9^^3261121.113|81^INDEPENDENT^NEEDS HELP^TOTALLY DEPENDENT^NEEDS HELP^INDEPENDENT^NEEDS HELP^^^SOMETIMES",
            L"8^^3260822.113|80^^NEEDS HELP^NEEDS HELP", L"7^^3260610.0915|79^^^INDEPENDENT^INDEPENDENT",
            L"6^1^3260305.1|78", L"5^1^3251202|77^TOTALLY DEPENDENT", L"4^1^3250900|76", L"3^1^soon|75^INDEPENDENT" });
}

std::vector<Kind> kinds()
{
    return { { "functional status", assessments(), 0 },

        { "feeding",
            madeRecords(InfantFeeding,
                { L"5^^3261110.09|85^FORMULA ONLY|5", L"3^^3260600|83^1/2 BREAST & 1/2 FORMULA|3",
                    L"1^^3260310.143|81^EXCLUSIVE BREASTFEEDING|1", L"0^^|80^" }),
            1 },
        { "reproductive history",
            madeRecords(Reproductive, { L"G3P1LC1SA1TA0^07/24/2026^NONE^01/25/2026^SONOGRAM^04/30/2027" }), 0 },
        { "empty reproductive history", madeRecords(Reproductive, { L"" }), 0 },
        { "refusals",
            madeRecords(Refusal,
                { L"8^^^IMMUNIZATION^14^INFLUENZA^^^3261120^1^^explained again",
                    L"6^^^IMMUNIZATION^14^INFLUENZA^^^3240000",
                    L"3^^^LAB^17^A VERY LONG NAME OF A LABORATORY TEST WITH SEVERAL COMPONENTS^^^3260110^1^^",
                    L"2^^^EKG^9^EKG^^^" }),
            2 },
        { "contracts",
            madeRecords(TreatmentContract,
                { L"5^^11/21/2026@08:15|81^MENTAL HEALTH|M^11/21/2026^OAKHURST,KATHERINE J|15",
                    L"3^^03/18/2025@08:50|81^PAIN|P^03/18/2025^WHITCOMB,YOLANDA D|16", L"2^^^PAIN|P^^OAK,KIT J|15" }),
            1 } };
}

CourseLook lookOf(double points)
{
    CourseLook look { QGuiApplication::font(), QGuiApplication::palette() };
    look.font.setPointSizeF(points);
    return look;
}

CourseSource sourceOf(const Kind& kind)
{
    return { .records = kind.records, .selected = kind.selected, .now = Today, .registryDue = {} };
}

// The picture on a larger sheet of a colour that no picture has.
QImage drawn(const CoursePicture& picture, const QRect& place, const CourseLook& look)
{
    QImage sheet(place.right() + place.left() + 1, place.bottom() + place.top() + 1, QImage::Format_RGB32);
    sheet.fill(Qt::magenta);
    QPainter painter(&sheet);
    picture.draw(painter, place, look);
    return sheet;
}

// The smallest rectangle around all that was drawn.
QRect inkOf(const QImage& sheet)
{
    QRect ink;
    for (int y = 0; y < sheet.height(); ++y) {
        for (int x = 0; x < sheet.width(); ++x) {
            if (sheet.pixelColor(x, y) != QColor(Qt::magenta))
                ink |= QRect(x, y, 1, 1);
        }
    }
    return ink;
}

void checkPoints(const CoursePicture& picture, const Kind& kind, const QRect& place, const CourseLook& look)
{
    for (const CoursePoint& point : picture.points(place, look)) {
        EXPECT_FALSE(point.text.isEmpty());
        EXPECT_TRUE(place.contains(point.place)) << point.text.toStdString();
        EXPECT_FALSE(point.place.isEmpty()) << point.text.toStdString();
        EXPECT_TRUE(point.record >= 0 && point.record < static_cast<int>(kind.records.size()));
    }
}

TEST(KindPictures, StayInTheirPlaceAtAllSizes)
{
    for (const Kind& kind : kinds()) {
        const auto picture = courseOf(sourceOf(kind));
        ASSERT_TRUE(picture) << kind.name;
        for (const double points : { 10.0, 15.0 }) {
            const CourseLook look = lookOf(points);
            for (const int width : { 1110, 700, 330 }) {
                SCOPED_TRACE(testing::Message() << kind.name << ' ' << points << ' ' << width);
                const int height = picture->heightFor(width, look);
                EXPECT_GE(height, picture->heightFor(width, lookOf(8)));
                EXPECT_GE(picture->heightFor(200, look), height); // things go below each other, nothing is left out
                const QRect place(30, 20, width, height);
                const QRect ink = inkOf(drawn(*picture, place, look));
                // Letters may reach a pixel beyond their advance.
                EXPECT_TRUE(place.adjusted(-1, 0, 1, 0).contains(ink))
                    << ink.left() << ' ' << ink.top() << ' ' << ink.right() << ' ' << ink.bottom() << " in height "
                    << height;
                EXPECT_GT(ink.bottom(), place.bottom() - height / 3); // no unused height
                checkPoints(*picture, kind, place, look);
            }
        }
    }
}

TEST(KindPictures, HaveTablesWithAllTexts)
{
    for (const Kind& kind : kinds()) {
        SCOPED_TRACE(kind.name);
        const CourseTable table = courseOf(sourceOf(kind))->table();
        EXPECT_FALSE(table.title.empty());
        for (const auto& row : table.rows)
            EXPECT_EQ(row.size(), table.headings.size());
    }
}

TEST(KindPictures, NoneForBirthMeasurementsAndWithoutASelectedDate)
{
    const auto birth = madeRecords(BirthMeasurements, { L"7^2^3.23" });
    EXPECT_FALSE(courseOf({ .records = birth, .selected = 0, .now = Today, .registryDue = {} }));
    const auto records = assessments();
    EXPECT_FALSE(courseOf({ .records = records, .selected = -1, .now = Today, .registryDue = {} }));
    EXPECT_FALSE(courseOf({ .records = records, .selected = 7, .now = Today, .registryDue = {} }));
    EXPECT_FALSE(courseOf({ .records = records, .selected = 6, .now = Today, .registryDue = {} })); // undated
}

// A narrow picture drops the oldest assessments, never the selected one.
TEST(KindPictures, FunctionalStatusDropsTheOldest)
{
    const auto records = assessments();
    const auto picture = courseOf({ .records = records, .selected = 1, .now = Today, .registryDue = {} });
    const auto shownAt = [&](int width) {
        QSet<int> shown;
        for (const CoursePoint& point : picture->points({ 0, 0, width, 4000 }, lookOf(10)))
            shown.insert(point.record);
        return shown;
    };
    EXPECT_EQ(shownAt(1500), QSet<int>({ 1, 2, 3, 4, 5 }));
    EXPECT_TRUE(shownAt(1500).contains(shownAt(700)));
    EXPECT_LT(shownAt(700).size(), 5);
    EXPECT_EQ(shownAt(120), QSet<int>({ 1 }));
    EXPECT_EQ(picture->table().headings.size(), 6u);
}

TEST(KindPictures, FeedingIsReadInTheOrderOfTime)
{
    const Kind kind = kinds()[1];
    CourseSource source = sourceOf(kind);
    source.birthDate = L"2026-03-01";
    const auto picture = courseOf(source);
    QStringList texts;
    for (const CoursePoint& point : picture->points({ 0, 0, 900, 400 }, lookOf(10)))
        texts.append(point.text);
    EXPECT_EQ(texts,
        QStringList({ "Exclusive Breastfeeding on 03/10/2026 14:30, age 9 days",
            "1/2 Breast & 1/2 Formula in 06/2026; changed from Exclusive Breastfeeding",
            "Formula Only on 11/10/2026 09:00, age 8 months; changed from 1/2 Breast & 1/2 Formula" }));
}

// With more items than a picture has room for, the selected one is still drawn, and the table has all.
TEST(KindPictures, LimitTheirHeight)
{
    std::vector<Text> lines;
    for (int i = 0; i < 500; ++i)
        lines.push_back(std::to_wstring(i) + L"^^^LAB^" + std::to_wstring(i) + L"^TEST " + std::to_wstring(i) + L"^^^"
            + std::to_wstring(3261120 - i / 28 * 100 - i % 28));
    std::vector<ListedRecord> records;
    for (const Text& line : lines)
        records.push_back(madeRecords(Refusal, { line })[0]);
    const auto picture = courseOf({ .records = records, .selected = 400, .now = Today, .registryDue = {} });
    const QRect place(0, 0, 900, picture->heightFor(900, lookOf(10)));
    EXPECT_LT(place.height(), 1500);
    const auto points = picture->points(place, lookOf(10));
    EXPECT_TRUE(std::ranges::any_of(points, [](const CoursePoint& point) { return point.record == 400; }));
    EXPECT_EQ(picture->table().rows.size(), 500u);
}

}
}
