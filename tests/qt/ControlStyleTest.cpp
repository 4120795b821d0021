#include "toolkit/ControlStyle.h"

#include "qt/ChoiceViews.h"
#include "qt/ComboBoxView.h"
#include "qt/ControlViews.h"
#include "qt/DateView.h"
#include "qt/QtDesktop.h"
#include "qt/TextViews.h"
#include "toolkit/Inks.h"
#include "toolkit/Measures.h"

#include <QApplication>
#include <QEventLoop>
#include <QProxyStyle>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

namespace health::test {
namespace {

QString baseStyle(const QWidget& widget) { return dynamic_cast<QProxyStyle&>(*widget.style()).baseStyle()->name(); }

// How many of the picture's pixels have a colour.
int count(const QImage& picture, const QColor& colour)
{
    int found = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            found += picture.pixelColor(x, y) == colour;
    }
    return found;
}

int count(QWidget& widget, Ink ink) { return count(widget.grab().toImage(), colourOf(ink, widget.palette())); }

TEST(ControlStyle, WidgetsShareOneThatFollowsTheApplication)
{
    CheckBox first;
    OptionButton second;
    CheckBoxView box(first);
    auto option = std::make_unique<OptionButtonView>(second);
    EXPECT_EQ(box.style(), option->style());
    option.reset(); // the style lives on
    const QString before = QApplication::style()->name();
    for (const QString& name : { QStringLiteral("windows"), before }) {
        QApplication::setStyle(name);
        EXPECT_EQ(baseStyle(box), name);
        box.grab();
    }
}

// Each kind of field is framed in red while its entry is refused, and tinted for a moment after the program has changed
// it; neither changes its size.
TEST(ControlStyle, FieldsShowFaultsAndChanges)
{
    QtDesktop desktop;
    TextBox text;
    TextBox area;
    ComboBox list;
    mevZvDate date;
    TextBoxView textView(text);
    TextAreaView areaView(area);
    ComboBoxView listView(list, nullptr);
    DateView dateView(date, desktop);
    const std::initializer_list<std::pair<Control*, QWidget*>> fields = { { &text, &textView }, { &area, &areaView },
        { &list, &listView }, { &date, &dateView } };
    for (const auto& [control, view] : fields) {
        SCOPED_TRACE(view->metaObject()->className());
        view->grab(); // lays it out
        const QSize size = view->sizeHint();
        EXPECT_EQ(count(*view, Ink::Error), 0);
        control->setFault(L"Not a date.");
        EXPECT_GT(count(*view, Ink::Error), view->width());
        control->setFault({});
        EXPECT_EQ(count(*view, Ink::Error), 0);
        control->setNote(L"Changed.");
        EXPECT_GT(count(*view, Ink::CautionTint), view->width() * view->height() / 3);
        EXPECT_EQ(view->sizeHint(), size);
    }
    for (const auto& [control, view] : fields) {
        const auto isUsual = [view = view] { return count(*view, Ink::CautionTint) == 0; };
        EXPECT_TRUE(QTest::qWaitFor(isUsual, 3000));
        control->setNote({});
        EXPECT_TRUE(isUsual());
    }
}

struct StillStyle : QProxyStyle {
    int styleHint(
        StyleHint hint, const QStyleOption* option, const QWidget* widget, QStyleHintReturn* returned) const override
    {
        return hint == SH_Widget_Animation_Duration ? 0 : QProxyStyle::styleHint(hint, option, widget, returned);
    }
};

TEST(ControlStyle, NothingFlashesWithoutAnimations)
{
    const QString before = QApplication::style()->name();
    QApplication::setStyle(new StillStyle);
    {
        TextBox text;
        TextBoxView view(text);
        text.setNote(L"Changed.");
        EXPECT_EQ(count(view, Ink::CautionTint), 0);
    }
    QApplication::setStyle(before);
}

// Fields, lists and buttons of a row have the same height; a button's caption decides its width.
TEST(ControlStyle, SizesFollowTheText)
{
    TextBox text;
    ComboBox list;
    Button save;
    Button more;
    Button summary;
    save.setCaption(L"&OK");
    more.setCaption(L"...");
    summary.setCaption(L"Visit Summary of the patient");
    const TextBoxView textView(text);
    const ComboBoxView listView(list, nullptr);
    const ButtonView saveView(save, nullptr);
    const ButtonView moreView(more, nullptr);
    const ButtonView summaryView(summary, nullptr);
    const Measures measures(saveView);
    for (const QWidget* const widget :
        std::initializer_list<const QWidget*> { &textView, &listView, &saveView, &moreView })
        EXPECT_EQ(widget->sizeHint().height(), measures.fieldHeight()) << widget->metaObject()->className();
    EXPECT_EQ(saveView.sizeHint().width(), 12 * saveView.fontMetrics().averageCharWidth());
    EXPECT_EQ(moreView.sizeHint().width(), measures.ellipsisWidth());
    const int caption = summaryView.fontMetrics().horizontalAdvance(summaryView.text());
    EXPECT_NEAR(summaryView.sizeHint().width(), caption + 6 * measures.u(), 1);
}

// Counts paintings.
struct Watch : QObject {
    bool eventFilter(QObject*, QEvent* event) override
    {
        paintings += event->type() == QEvent::Paint;
        return false;
    }

    int paintings = 0;
};

// As a server's call does: no timers, no input.
void waitAsInACall(int milliseconds)
{
    QElapsedTimer time;
    time.start();
    while (time.elapsed() < milliseconds) {
        QCoreApplication::processEvents(QEventLoop::X11ExcludeTimers | QEventLoop::ExcludeUserInputEvents);
        QThread::msleep(10);
    }
}

TEST(BusyButton, TurnsAMarkDuringALongCallOnly)
{
    Button button;
    button.setCaption(L"&OK");
    ButtonView view(button, nullptr);
    view.setFilled(true);
    view.show();
    waitAsInACall(50);
    const QImage usual = view.grab().toImage();
    const QSize size = view.size();
    Watch watch;
    view.installEventFilter(&watch);
    button.setBusy(true);
    waitAsInACall(300);
    EXPECT_EQ(view.grab().toImage(), usual) << "too early";
    waitAsInACall(300);
    const QImage busy = view.grab().toImage();
    EXPECT_NE(busy, usual);
    watch.paintings = 0;
    waitAsInACall(500);
    EXPECT_NE(view.grab().toImage(), busy) << "stands still";
    EXPECT_GE(watch.paintings, 3);
    EXPECT_LE(watch.paintings, 8);
    EXPECT_EQ(view.size(), size);
    EXPECT_EQ(view.text(), QStringLiteral("&OK"));
    button.setBusy(false);
    waitAsInACall(50);
    EXPECT_EQ(view.grab().toImage(), usual);
    watch.paintings = 0;
    waitAsInACall(250);
    EXPECT_EQ(watch.paintings, 0);
}

// A message box during the action runs a usual event loop, which must not be kept busy by the mark.
TEST(BusyButton, RestsInAUsualEventLoop)
{
    Button button;
    ButtonView view(button, nullptr);
    view.show();
    button.setBusy(true);
    const std::clock_t before = std::clock();
    QEventLoop loop; // QTest::qWait would pause between the events
    QTimer::singleShot(600, &loop, &QEventLoop::quit);
    loop.exec();
    EXPECT_LT(std::clock() - before, CLOCKS_PER_SEC / 5);
}

}
}
