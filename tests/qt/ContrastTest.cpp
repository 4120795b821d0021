// Texts can be read in each palette: measured on what is drawn.
#include "toolkit/Contrast.h"
#include "control/GridColumns.h"
#include "control/kalmevRepHistCtrl.h"
#include "host/windows/ListPicker.h"
#include "host/desktop/ReadablePalette.h"
#include "qt/PanelView.h"
#include "tests/support/EveryForm.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QStyle>
#include <QStyleOptionButton>
#include <QStyleOptionComboBox>
#include <QStyleOptionGroupBox>
#include <QTest>

#include <gtest/gtest.h>

namespace health::test {
namespace {

struct NamedPalette {
    const char* name;
    QPalette palette;
};

QPalette paletteOf(const char* window, const char* base, const char* alternate, const char* text, const char* highlight,
    const char* highlightedText)
{
    const QColor ground(window);
    const QColor ink(text);
    QPalette palette(ink, ground, ground, ground, ground, ink, ink, QColor(base), ground);
    palette.setColor(QPalette::AlternateBase, QColor(alternate));
    palette.setColor(QPalette::Highlight, QColor(highlight));
    palette.setColor(QPalette::HighlightedText, QColor(highlightedText));
    QColor hint = ink;
    hint.setAlpha(128); // as the toolkit does
    palette.setColor(QPalette::PlaceholderText, hint);
    return palette;
}

std::vector<NamedPalette> palettes()
{
    return { { "light", QApplication::style()->standardPalette() },
        { "dark", paletteOf("#353535", "#191919", "#353535", "#ffffff", "#2a82da", "#000000") },
        { "slate", paletteOf("#31363b", "#232629", "#31363b", "#eff0f1", "#3daee9", "#eff0f1") },
        { "high contrast black", paletteOf("#000000", "#000000", "#000000", "#ffffff", "#1aebff", "#000000") },
        { "high contrast white", paletteOf("#ffffff", "#ffffff", "#ffffff", "#000000", "#37006e", "#ffffff") } };
}

// Between the ground, which most pixels show, and the pixel that stands out most.
double drawnContrast(const QImage& image, const QRect& place)
{
    std::map<QRgb, int> pixels;
    const QRect inside = place.intersected(image.rect());
    for (int y = inside.top(); y <= inside.bottom(); ++y) {
        for (int x = inside.left(); x <= inside.right(); ++x)
            ++pixels[image.pixel(x, y)];
    }
    if (pixels.empty())
        return 0;
    const auto ground = std::max_element(
        pixels.begin(), pixels.end(), [](const auto& one, const auto& other) { return one.second < other.second; });
    double best = 1;
    for (const auto& pixel : pixels)
        best = std::max(best, contrast(QColor(ground->first), QColor(pixel.first)));
    return best;
}

// Where a widget draws its text, without its frame; null for one that draws none.
QRect textPlace(const QWidget& widget)
{
    const QStyle& style = *widget.style();
    if (const auto* const label = qobject_cast<const QLabel*>(&widget))
        return label->text().isEmpty() ? QRect() : label->contentsRect();
    if (const auto* const line = qobject_cast<const QLineEdit*>(&widget))
        return line->text().isEmpty() && line->placeholderText().isEmpty() ? QRect()
                                                                           : line->rect().adjusted(4, 4, -4, -4);
    if (const auto* const combo = qobject_cast<const QComboBox*>(&widget)) {
        QStyleOptionComboBox option;
        option.initFrom(combo);
        return combo->currentText().isEmpty()
            ? QRect()
            : style.subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, combo)
                  .adjusted(2, 3, -2, -3);
    }
    if (const auto* const group = qobject_cast<const QGroupBox*>(&widget)) {
        QStyleOptionGroupBox option;
        option.initFrom(group);
        option.text = group->title();
        option.subControls = QStyle::SC_GroupBoxLabel | QStyle::SC_GroupBoxFrame;
        return group->title().isEmpty()
            ? QRect()
            : style.subControlRect(QStyle::CC_GroupBox, &option, QStyle::SC_GroupBoxLabel, group);
    }
    const auto* const button = qobject_cast<const QAbstractButton*>(&widget);
    if (!button || button->text().isEmpty())
        return {};
    QStyleOptionButton option;
    option.initFrom(button);
    if (qobject_cast<const QCheckBox*>(button))
        return style.subElementRect(QStyle::SE_CheckBoxContents, &option, button);
    if (qobject_cast<const QRadioButton*>(button))
        return style.subElementRect(QStyle::SE_RadioButtonContents, &option, button);
    return button->rect().adjusted(5, 5, -5, -5);
}

// All texts that a window shows, and the rows of its lists. Disabled ones need no contrast.
void expectReadable(QWidget& window, const char* palette)
{
    if (QWidget* const focused = window.focusWidget())
        focused->clearFocus(); // no cursor, no frame
    QCoreApplication::processEvents();
    const QImage image = window.grab().toImage();
    int texts = 0;
    const auto measure = [&](const QWidget& widget, const QRect& place, const QString& text) {
        ++texts;
        if (!widget.isEnabled())
            return;
        const double measured = drawnContrast(image, QRect(widget.mapTo(&window, place.topLeft()), place.size()));
        EXPECT_GE(measured, ReadableContrast)
            << palette << ", " << window.windowTitle().toStdString() << ": " << text.toStdString();
    };
    for (const QWidget* const widget : window.findChildren<QWidget*>()) {
        if (!widget->isVisible())
            continue;
        if (const QRect place = textPlace(*widget); !place.isEmpty())
            measure(*widget, place,
                QString::fromLatin1(widget->metaObject()->className()) + u' ' + widget->property("text").toString());
        const auto* const view = qobject_cast<const QAbstractItemView*>(widget);
        if (!view || !view->model())
            continue;
        // Beside the check mark, if there is one.
        const int mark = qobject_cast<const QListWidget*>(view) ? view->fontMetrics().height() * 2 : 2;
        for (int row = 0; row < view->model()->rowCount(); ++row) {
            for (int column = 0; column < view->model()->columnCount(); ++column) {
                const QModelIndex index = view->model()->index(row, column);
                const QRect place = view->visualRect(index).adjusted(mark, 1, -2, -1) & view->viewport()->rect();
                if (!index.data().toString().isEmpty() && place.height() + 4 > view->fontMetrics().height())
                    measure(*view->viewport(), place, index.data().toString());
            }
        }
    }
    EXPECT_GT(texts, 2);
}

// The greatest contrast of a place on a widget with the ground beside the text that follows it.
double outlineContrast(QWidget& widget, const QRect& place)
{
    const QImage image = widget.grab().toImage();
    const QColor ground(image.pixel(place.right() + 2, place.center().y()));
    double greatest = 1;
    for (int x = place.left(); x <= place.right(); ++x) {
        for (int y = place.top(); y <= place.bottom(); ++y)
            greatest = std::max(greatest, contrast(QColor(image.pixel(x, y)), ground));
    }
    return greatest;
}

// All options and check marks that are free, in a window and in its lists. Returns how many there are.
int expectEmptyChoicesSeen(QWidget& window, const char* palette)
{
    static constexpr double ShapeContrast = 3;
    int choices = 0;
    for (QAbstractButton* const button : window.findChildren<QAbstractButton*>()) {
        const bool round = qobject_cast<QRadioButton*>(button);
        if ((!round && !qobject_cast<QCheckBox*>(button)) || button->isChecked() || !button->isEnabled()
            || !button->isVisible())
            continue;
        QStyleOptionButton option;
        option.initFrom(button);
        const QRect place = button->style()->subElementRect(
            round ? QStyle::SE_RadioButtonIndicator : QStyle::SE_CheckBoxIndicator, &option, button);
        EXPECT_GE(outlineContrast(*button, place), ShapeContrast) << palette << button->text().toStdString();
        ++choices;
    }
    for (QListWidget* const list : window.findChildren<QListWidget*>()) {
        QRect place = list->visualItemRect(list->item(list->count() - 1));
        place.setWidth(list->style()->pixelMetric(QStyle::PM_IndicatorWidth) + 2);
        EXPECT_GE(outlineContrast(*list->viewport(), place), ShapeContrast) << palette;
        ++choices;
    }
    return choices;
}

class ContrastTest : public testing::Test {
protected:
    ~ContrastTest() override { QApplication::setPalette(QApplication::style()->standardPalette()); }

    ReadablePalette keeper { nullptr }; // as in the host
};

TEST_F(ContrastTest, FormsCanBeReadInEveryPalette)
{
    for (const NamedPalette& palette : palettes()) {
        QApplication::setPalette(palette.palette);
        ShownForms forms;
        int choices = 0;
        forms.showAll([&](QWidget& window) {
            expectReadable(window, palette.name);
            choices += expectEmptyChoicesSeen(window, palette.name);
        });
        EXPECT_GT(choices, 20) << palette.name;
    }
}

TEST_F(ContrastTest, GridCanBeReadInEveryPalette)
{
    ScriptedHost host;
    QtDesktop desktop;
    modShared shared(desktop);
    kalmevRepHistCtrl control(shared, host);
    host.session->reply(L"MEVVELD GET", L"1^^^A\r\n2^^^B\r\n3^^^C\r\n4^^^D\r\n");
    host.patient->patientNumber = 12;
    control.UserControl_Initialize();
    PanelView view(control, desktop);
    view.resize(900, 500);
    view.show();
    QTest::qWait(20);
    const auto* const table = view.findChild<QTableView*>();
    ASSERT_EQ(table->model()->rowCount(), 4);
    // Blue on both grounds, and selected.
    for (const int row : { 0, 1, 2 })
        control.fgData.setCellForeColour(row, GridColumn::Summary, Blue);
    for (const NamedPalette& palette : palettes()) {
        QApplication::setPalette(palette.palette);
        for (const int selected : { 2, 3 }) {
            control.fgData.select(selected);
            QTest::qWait(10);
            expectReadable(view, palette.name);
        }
        // The colour tells, too, not the weight of the letters alone.
        const auto colour = [&](int row) { return table->model()->index(row, 1).data(Qt::ForegroundRole); };
        EXPECT_TRUE(colour(0).isValid()) << palette.name;
        EXPECT_FALSE(colour(3).isValid()) << palette.name;
        const QColor shown = colour(0).value<QBrush>().color();
        EXPECT_GT(shown.blue(), shown.red() + 40) << palette.name;
    }
}

TEST_F(ContrastTest, PickerCanBeReadInEveryPalette)
{
    for (const NamedPalette& palette : palettes()) {
        QApplication::setPalette(palette.palette);
        ListPicker picker("Select Patient", { "Name", "Born" }, nullptr);
        picker.setSearch("Beginning of the name", [](const QString&) {
            const QStringList texts { "Hartley, Marigold", "1997" };
            return std::optional(QList<ListPicker::Row> { { "1", texts }, { "2", texts }, { "3", texts } });
        });
        picker.show();
        QTest::qWait(10);
        expectReadable(picker, palette.name);
    }
}

}
}
