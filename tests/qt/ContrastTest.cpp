// Texts are readable in each palette: measured on the drawn pixels.
#include "toolkit/Contrast.h"
#include "control/GridColumns.h"
#include "control/kalmevRepHistCtrl.h"
#include "host/desktop/ReadablePalette.h"
#include "qt/PanelView.h"
#include "tests/support/EveryForm.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QListWidget>
#include <QRadioButton>
#include <QStyle>
#include <QTest>

#include <gtest/gtest.h>

namespace health::test {
namespace {

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

std::map<const char*, QPalette> palettes()
{
    return { { "light", QApplication::style()->standardPalette() },
        { "dark", paletteOf("#353535", "#191919", "#353535", "#ffffff", "#2a82da", "#000000") },
        { "slate", paletteOf("#31363b", "#232629", "#31363b", "#eff0f1", "#3daee9", "#eff0f1") },
        { "high contrast black", paletteOf("#000000", "#000000", "#000000", "#ffffff", "#1aebff", "#000000") },
        { "high contrast white", paletteOf("#ffffff", "#ffffff", "#ffffff", "#000000", "#37006e", "#ffffff") } };
}

// Between the ground, the colour of most pixels, and the pixel that differs most from it.
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

// Where a widget draws its text, without its frame and its check mark; null for one that draws none.
QRect textPlace(const QWidget& widget)
{
    const QString text = widget.property("text").toString() + widget.property("title").toString()
        + widget.property("currentText").toString() + widget.property("placeholderText").toString();
    if (text.isEmpty())
        return {};
    if (qobject_cast<const QGroupBox*>(&widget))
        return { 10, 0, widget.fontMetrics().horizontalAdvance(text) - 4, widget.fontMetrics().height() };
    const bool isMarked = qobject_cast<const QCheckBox*>(&widget) || qobject_cast<const QRadioButton*>(&widget);
    const int arrow = qobject_cast<const QComboBox*>(&widget) ? 24 : 0;
    const int frame = isMarked || qobject_cast<const QLabel*>(&widget) ? 0 : 5;
    return widget.rect().adjusted(isMarked ? 22 : frame, frame, -frame - arrow, -frame);
}

// All texts in a window, and the rows of its lists. Disabled ones need no contrast.
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

// The options and check marks that are free: their outline against the ground beside them. Returns how many there are.
int expectEmptyChoicesSeen(QWidget& window, const char* palette)
{
    static constexpr double ShapeContrast = 3;
    int choices = 0;
    const auto expectSeen = [&](QWidget& widget, const QRect& mark) {
        ++choices;
        EXPECT_GE(drawnContrast(widget.grab().toImage(), mark), ShapeContrast) << palette;
    };
    for (QAbstractButton* const button : window.findChildren<QAbstractButton*>()) {
        const bool isChoice = qobject_cast<QRadioButton*>(button) || qobject_cast<QCheckBox*>(button);
        if (isChoice && !button->isChecked() && button->isEnabled() && button->isVisible())
            expectSeen(*button, QRect(0, 0, 17, button->height()));
    }
    for (QListWidget* const list : window.findChildren<QListWidget*>()) {
        QRect place = list->visualItemRect(list->item(list->count() - 1));
        place.setWidth(17);
        expectSeen(*list->viewport(), place);
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
    for (const auto& [name, palette] : palettes()) {
        QApplication::setPalette(palette);
        ShownForms forms;
        int choices = 0;
        forms.showAll([&, name = name](QWidget& window) {
            expectReadable(window, name);
            choices += expectEmptyChoicesSeen(window, name);
        });
        EXPECT_GT(choices, 20) << name;
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
    for (const auto& [name, palette] : palettes()) {
        QApplication::setPalette(palette);
        for (const int selected : { 2, 3 }) {
            control.fgData.select(selected);
            QTest::qWait(10);
            expectReadable(view, name);
        }
        // Highlighted rows differ in colour, not only in weight.
        const auto colour = [&](int row) { return table->model()->index(row, 1).data(Qt::ForegroundRole); };
        EXPECT_TRUE(colour(0).isValid()) << name;
        EXPECT_FALSE(colour(3).isValid()) << name;
        const QColor shown = colour(0).value<QBrush>().color();
        EXPECT_GT(shown.blue(), shown.red() + 40) << name;
    }
}

}
}
