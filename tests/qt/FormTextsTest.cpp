// What a form says about itself and its fields, as its window shows it.
#include "platform/controls/TextBox.h"
#include "qt/FormDialog.h"
#include "qt/HeadingStrip.h"
#include "qt/NoticeLine.h"
#include "qt/QtDesktop.h"
#include "qt/SummaryLine.h"
#include "qt/ToneLabel.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>

namespace health::test {
namespace {

// Two fields whose texts a test sets.
class TalkingForm : public Form {
public:
    TalkingForm()
        : Form(L"TalkingForm", L"Talk")
    {
        lblWeight.setCaption(L"&Use of Weight");
        lblDate.setCaption(L"Date");
        cmdOK.setCaption(L"&Save");
        setDefaultButton(&cmdOK);
        head.name = L"Hartley, Marigold Rose";
    }

    Arrangement arrangement() override
    {
        return column({ fields({ field(lblWeight, { wide(txtWeight, 8) }),
                            field(lblDate, { wide(txtDate, 10), wide(txtTime, 4) }) }),
            buttons({ cmdOK }) });
    }
    FormHeading heading() override
    {
        ++asked;
        return isGone ? throw std::runtime_error("The host is gone.") : head;
    }
    Explanation explain(const Control& control) override { return said[&control]; }
    SaveSummary summary() override { return willSave; }
    FormNotice notice() override { return offer; }
    void followNotice() override { ++followed; }
    using Form::noteTextsChanged;

    Label lblWeight;
    TextBox txtWeight;
    Label lblDate;
    TextBox txtDate;
    TextBox txtTime;
    Button cmdOK;
    FormHeading head;
    std::map<const Control*, Explanation> said;
    SaveSummary willSave;
    FormNotice offer;
    bool isGone = false;
    int asked = 0;
    int followed = 0;
};

class FormTextsTest : public testing::Test {
protected:
    // Shows the form until `work` is done.
    void show(const std::function<void(FormDialog&)>& work)
    {
        FormDialog dialog(form, desktop, nullptr);
        QTimer::singleShot(0, &dialog, [&] {
            QTest::qWait(1);
            work(dialog);
            form.close();
        });
        dialog.run();
    }

    template<typename Kind>
    static QList<Kind*> all(const QWidget& window)
    {
        QList<Kind*> found;
        for (QWidget* const widget : window.findChildren<QWidget*>()) {
            if (auto* const one = dynamic_cast<Kind*>(widget))
                found.append(one);
        }
        return found;
    }
    static QStringList shown(const QWidget& window)
    {
        QStringList texts;
        for (const ToneLabel* const label : all<ToneLabel>(window)) {
            if (label->isVisible() && !label->text().isEmpty())
                texts.append(label->text());
        }
        return texts;
    }
    static QString spoken(const FormDialog& dialog, Control& control)
    {
        return dialog.widgets().value(&control)->accessibleDescription();
    }

    TalkingForm form;
    QtDesktop desktop;
};

TEST_F(FormTextsTest, FaultTakesThePlaceOfTheNoteAndNothingMoves)
{
    form.said[&form.txtWeight] = { L"= 3.2 kg", Tone::Good, L"2 to 9 lbs", {}, {} };
    show([&](FormDialog& dialog) {
        EXPECT_EQ(shown(dialog), QStringList({ "= 3.2 kg", "2 to 9 lbs" }));
        EXPECT_EQ(spoken(dialog, form.txtWeight), "= 3.2 kg. 2 to 9 lbs");
        const QWidget* const below = dialog.widgets().value(&form.txtDate);
        const QPoint place = below->mapTo(&dialog, QPoint());
        form.txtWeight.setNote(L"Rounded.");
        QTest::qWait(1);
        EXPECT_EQ(shown(dialog), QStringList({ "= 3.2 kg", "Rounded." }));
        form.txtWeight.setFault(L"Too heavy.");
        QTest::qWait(1);
        EXPECT_EQ(shown(dialog), QStringList({ "Too heavy." }));
        EXPECT_TRUE(spoken(dialog, form.txtWeight).startsWith("Too heavy."));
        form.txtWeight.edit(L"8");
        QTest::qWait(1);
        EXPECT_EQ(shown(dialog), QStringList({ "= 3.2 kg", "2 to 9 lbs" }));
        form.said[&form.txtWeight].below.clear();
        form.noteTextsChanged();
        QTest::qWait(1);
        EXPECT_EQ(below->mapTo(&dialog, QPoint()), place);
    });
}

TEST_F(FormTextsTest, RowSpeaksForTheFieldWithTheFocus)
{
    form.said[&form.txtWeight].below = L"2 to 9 lbs"; // alone in its row
    form.said[&form.txtDate] = { L"= today", Tone::Good, L"up to today", {}, {} };
    form.said[&form.txtTime] = { L"= noon", Tone::Good, L"0:00 to 23:59", {}, {} };
    show([&](FormDialog& dialog) {
        const auto expectShown = [&](const QStringList& texts) {
            QTest::qWait(1);
            QStringList sorted = shown(dialog);
            sorted.sort();
            EXPECT_EQ(sorted, texts);
        };
        expectShown({ "2 to 9 lbs", "= today" });
        form.moveFocus(form.txtTime);
        expectShown({ "0:00 to 23:59", "2 to 9 lbs", "= today" });
        form.txtDate.setNote(L"Rounded.");
        expectShown({ "2 to 9 lbs", "= today", "Rounded." });
    });
}

TEST_F(FormTextsTest, ChangesAreShownTogetherAndStopWithTheWindow)
{
    show([&](FormDialog&) {
        const int before = form.asked;
        for (const TextView text : { L"1", L"2", L"3" })
            form.txtWeight.setText(text);
        form.noteTextsChanged();
        EXPECT_EQ(form.asked, before);
        QTest::qWait(1);
        EXPECT_EQ(form.asked, before + 1);
    });
    const int before = form.asked;
    form.txtWeight.setText(L"4");
    QTest::qWait(1);
    EXPECT_EQ(form.asked, before);
}

TEST_F(FormTextsTest, SuggestionIsUsedByItsKey)
{
    form.said[&form.txtDate].suggestion = L"40 weeks after LMP: 04/30/2027";
    form.said[&form.txtDate].use = [this] { form.txtDate.setText(L"04/30/2027"); };
    show([&](FormDialog& dialog) {
        EXPECT_TRUE(shown(dialog).contains("40 weeks after LMP: 04/30/2027"));
        // "U" belongs to the first field, "S" to the button.
        QTest::keyClick(&dialog, Qt::Key_E, Qt::AltModifier);
        EXPECT_EQ(form.txtDate.text(), L"04/30/2027");
        EXPECT_EQ(form.activeControl(), &form.txtWeight);
        form.said[&form.txtWeight].suggestion = L"3.2 kg";
        form.said[&form.txtWeight].use = [this] { form.txtWeight.setText(L"3.2"); };
        form.txtDate.setText(L"");
        QTest::qWait(1);
        form.moveFocus(form.txtDate); // the key follows
        QTest::qWait(1);
        QTest::keyClick(&dialog, Qt::Key_E, Qt::AltModifier);
        EXPECT_EQ(form.txtWeight.text() + form.txtDate.text(), L"04/30/2027");
        form.said[&form.txtDate].use = nullptr;
        form.moveFocus(form.txtWeight);
        QTest::qWait(1);
        QTest::keyClick(&dialog, Qt::Key_E, Qt::AltModifier);
        EXPECT_EQ(form.txtWeight.text(), L"3.2");
        EXPECT_EQ(std::ranges::count_if(dialog.findChildren<QPushButton*>(),
                      [](const QPushButton* button) { return button->isVisible(); }),
            2); // Save, and a single Use
    });
}

TEST_F(FormTextsTest, SummaryOpensAndNamesTheFirstFault)
{
    form.willSave.parts = { { L"Weight", L"8", true }, { L"Date", L"", false } };
    form.willSave.surprises = { L"The date is sent empty." };
    show([&](FormDialog& dialog) {
        SummaryLine& line = *all<SummaryLine>(dialog).first();
        EXPECT_TRUE(line.isVisible());
        EXPECT_EQ(line.accessibleDescription(), "Weight=8; The date is sent empty.");
        const int before = line.height();
        const int foot = dialog.topOfButtons();
        const QPoint field = dialog.widgets().value(&form.txtDate)->mapTo(&dialog, QPoint());
        QTest::keyClick(&dialog, Qt::Key_F2);
        QTest::qWait(1);
        EXPECT_GT(line.height(), before);
        EXPECT_GT(dialog.topOfButtons(), foot);
        EXPECT_EQ(dialog.widgets().value(&form.txtDate)->mapTo(&dialog, QPoint()), field);
        QTest::mouseClick(&line, Qt::LeftButton);
        QTest::mouseClick(&line, Qt::RightButton);
        QTest::qWait(1);
        EXPECT_EQ(dialog.topOfButtons(), foot);
        form.txtDate.setFault(L"Not a date.");
        form.txtWeight.setFault(L"Too\nheavy.");
        QTest::qWait(1);
        EXPECT_TRUE(line.accessibleDescription().startsWith("Check first: Use of Weight: Too heavy."));
        const int high = line.heightForWidth(line.width());
        form.willSave.surprises.clear();
        form.noteTextsChanged();
        QTest::qWait(1);
        EXPECT_EQ(line.accessibleDescription(), "Check first: Use of Weight: Too heavy.");
        EXPECT_LT(line.heightForWidth(line.width()), high);
        form.willSave.parts.clear();
        form.noteTextsChanged();
        QTest::qWait(1);
        EXPECT_TRUE(line.isVisible());
        form.txtDate.setFault(L"");
        form.txtWeight.setFault(L"");
        form.said[&form.txtDate].beside = L"Not a day";
        form.said[&form.txtDate].tone = Tone::Error;
        form.noteTextsChanged();
        QTest::qWait(1);
        EXPECT_TRUE(line.accessibleDescription().contains("Not a day")) << line.accessibleDescription().toStdString();
    });
}

TEST_F(FormTextsTest, NoticeComesLastAndIsFollowedByEnter)
{
    form.offer = { L"Changed by another session.", L"&Use It" };
    show([&](FormDialog& dialog) {
        QPushButton& button = all<NoticeLine>(dialog).first()->button();
        ASSERT_TRUE(button.isVisible());
        EXPECT_FALSE(button.text().contains("&U")); // the key of a field
        EXPECT_TRUE(button.text().contains(u'&'));
        dialog.widgets().value(&form.cmdOK)->setFocus();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        EXPECT_EQ(QApplication::focusWidget(), &button);
        QTest::keyClick(&button, Qt::Key_Return);
        EXPECT_EQ(form.followed, 1);
        form.offer = {};
        form.noteTextsChanged();
        QTest::qWait(1);
        EXPECT_FALSE(button.isVisible());
    });
}

TEST_F(FormTextsTest, WarningReplacesTheHeading)
{
    form.head.visit = L"Visit today";
    form.head.visitKind = FormHeading::Visit::Current;
    show([&](FormDialog& dialog) {
        const HeadingStrip& strip = *all<HeadingStrip>(dialog).first();
        EXPECT_EQ(strip.text(), "Hartley, Marigold Rose · Visit today (current visit)");
        const auto change = [&](const QString& text) {
            form.noteTextsChanged();
            QTest::qWait(1);
            EXPECT_EQ(strip.text(), text);
            EXPECT_TRUE(strip.isVisible());
        };
        form.head.visitKind = FormHeading::Visit::Other;
        change("Hartley, Marigold Rose · Visit today");
        form.head.record = L"Record of 02/01/2026";
        change("Hartley, Marigold Rose · Visit today · Record of 02/01/2026");
        form.head.name.clear();
        form.head.warning = L"Another patient is selected.";
        change("Another patient is selected.");
        form.isGone = true; // the texts stay
        change("Another patient is selected.");
        form.isGone = false;
    });
}

}
}
