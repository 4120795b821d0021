// Rules that the layout of every form keeps, at each size of text.
#include "qt/BodyArea.h"
#include "qt/FieldViews.h"
#include "qt/FormDialog.h"
#include "tests/support/EveryForm.h"
#include "toolkit/Measures.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>

#include <gtest/gtest.h>

namespace health::test {
namespace {

template<typename Kind>
QList<Kind*> visible(const QWidget& window)
{
    QList<Kind*> found;
    for (QWidget* const widget : window.findChildren<QWidget*>()) {
        if (auto* const one = dynamic_cast<Kind*>(widget); one && one->isVisible())
            found.append(one);
    }
    return found;
}

std::string describe(const QWidget& widget)
{
    const QString words = widget.accessibleName() + u' ' + widget.property("text").toString();
    return widget.window()->windowTitle().toStdString() + ", " + widget.metaObject()->className() + ' '
        + words.toStdString();
}

QRect placeIn(const QWidget& window, const QWidget& widget)
{
    return { widget.mapTo(&window, QPoint()), widget.size() };
}

// Of a form, at the size of text for which it was opened.
class Layout {
public:
    explicit Layout(QWidget& window)
        : m_window(dynamic_cast<FormDialog&>(window))
        , m_body(*visible<BodyArea>(window).first())
    {
    }

    void check() const
    {
        expectAxes();
        expectLists();
        expectApart();
        expectFoot();
        expectWhole();
        expectScreen();
    }

private:
    // Lines that lie within two letters of each other are meant to be one.
    static void expectOneLine(const QList<QPair<int, const QWidget*>>& edges, int letter)
    {
        for (const auto& [edge, widget] : edges) {
            for (const auto& [other, neighbour] : edges)
                EXPECT_FALSE(edge != other && std::abs(edge - other) < 2 * letter)
                    << describe(*widget) << " at " << edge << ", " << describe(*neighbour) << " at " << other;
        }
    }

    void expectAxes() const
    {
        QList<QPair<int, const QWidget*>> captions;
        QList<QPair<int, const QWidget*>> values;
        for (const QLabel* const label : visible<QLabel>(m_window)) {
            const QWidget* const field = label->buddy();
            if (!field || !field->isVisible() || !m_body.isAncestorOf(field))
                continue;
            const QRect caption = placeIn(m_window, *label);
            const QRect value = placeIn(m_window, *field);
            if (value.left() <= caption.right())
                continue; // a caption above its field
            captions.append({ caption.right(), label });
            values.append({ value.left(), field });
        }
        expectOneLine(captions, Measures(m_window).em());
        expectOneLine(values, Measures(m_window).em());
    }

    void expectLists() const
    {
        for (const QComboBox* const list : visible<QComboBox>(m_window)) {
            for (int i = 0; i < list->count(); ++i)
                EXPECT_GT(list->width(), list->fontMetrics().horizontalAdvance(list->itemText(i))) << describe(*list);
        }
    }

    // The widgets of the controls, and the texts about them.
    QList<const QWidget*> leaves() const
    {
        QList<const QWidget*> all;
        for (const QWidget* const widget : m_window.widgets()) {
            if (widget->isVisible())
                all.append(widget);
        }
        for (const QLabel* const label : visible<QLabel>(m_window)) {
            const bool isInside = std::ranges::any_of(
                all, [&](const QWidget* widget) { return widget == label || widget->isAncestorOf(label); });
            if (!isInside && !label->text().isEmpty())
                all.append(label);
        }
        return all;
    }

    void expectApart() const
    {
        const QList<const QWidget*> all = leaves();
        for (qsizetype i = 0; i < all.size(); ++i) {
            const QWidget& one = *all[i];
            EXPECT_TRUE(one.parentWidget()->rect().contains(one.geometry()))
                << describe(one) << " is cut by its parent";
            for (qsizetype k = i + 1; k < all.size(); ++k) {
                const bool isHidden = m_body.isAncestorOf(&one) != m_body.isAncestorOf(all[k]); // scrolled away
                const bool isInside = dynamic_cast<const UpDownView*>(&one) || dynamic_cast<const UpDownView*>(all[k]);
                EXPECT_TRUE(isHidden || isInside || !placeIn(m_window, one).intersects(placeIn(m_window, *all[k])))
                    << describe(one) << " overlaps " << describe(*all[k]);
            }
        }
    }

    void expectFoot() const
    {
        QSet<int> tops;
        for (const auto& [control, widget] : m_window.widgets().asKeyValueRange()) {
            if (m_body.isAncestorOf(widget))
                continue;
            const QRect place = placeIn(m_window, *widget);
            EXPECT_TRUE(m_window.rect().contains(place)) << describe(*widget);
            tops.insert(place.top());
        }
        EXPECT_EQ(tops.size(), 1) << describe(m_window);
    }

    void expectWhole() const
    {
        for (const QLabel* const label : visible<QLabel>(m_window)) {
            EXPECT_GE(label->height(), label->wordWrap() ? label->heightForWidth(label->width()) : 0)
                << describe(*label);
            EXPECT_TRUE(label->wordWrap() || label->width() >= label->sizeHint().width()) << describe(*label);
        }
        for (const QPushButton* const button : visible<QPushButton>(m_window))
            EXPECT_GE(button->width(), button->fontMetrics().horizontalAdvance(button->text().remove(u'&')))
                << describe(*button);
    }

    // Only the body scrolls, and only if it must.
    void expectScreen() const
    {
        const QSize screen = m_window.screen()->availableSize();
        EXPECT_LE(m_window.height(), screen.height());
        EXPECT_LE(m_window.width(), screen.width());
        const auto isScrolled = [](const QScrollBar& bar) { return bar.isVisible() && bar.maximum() > 0; };
        const bool isFull = m_window.height() * 10 > screen.height() * 9;
        EXPECT_TRUE(isFull || !isScrolled(*m_body.verticalScrollBar())) << describe(m_window);
        const bool isWide = m_body.leastWidth() > m_window.width();
        EXPECT_EQ(isScrolled(*m_body.horizontalScrollBar()), isWide) << describe(m_window);
        int widest = m_body.sizeHint().width();
        for (const QLabel* const label : visible<QLabel>(m_window)) {
            if (!m_body.isAncestorOf(label))
                widest = std::max(widest, label->sizeHint().width());
        }
        EXPECT_LE(m_window.width(), std::max(widest, Measures(m_window).ems(30))) << describe(m_window);
    }

    FormDialog& m_window;
    const BodyArea& m_body;
};

QPalette dark()
{
    QPalette palette(QColor(0xe6e8ea), QColor(0x2b2f33), QColor(0x3a3f44), QColor(0x1d2023), QColor(0x24272a),
        QColor(0xe6e8ea), QColor(0xffffff), QColor(0x1f2225), QColor(0x2b2f33));
    return palette;
}

class FormLayout : public testing::TestWithParam<double> {
protected:
    ~FormLayout() override
    {
        QApplication::setFont(before);
        QApplication::setPalette(QApplication::style()->standardPalette());
    }

    const QFont before = QApplication::font();
};

TEST_P(FormLayout, KeepsItsRulesInEveryForm)
{
    QApplication::setFont(scaled(before, GetParam()));
    for (const QPalette& palette : { QApplication::style()->standardPalette(), dark() }) {
        QApplication::setPalette(palette);
        ShownForms forms;
        forms.host.patient->shownName = L"Hartley, Marigold Rose";
        forms.host.encounter->shown = L"11/21/2026 08:15, Pediatric Clinic";
        int seen = 0;
        forms.showAll([&](QWidget& window) {
            Layout(window).check();
            ++seen;
        });
        EXPECT_GT(seen, 12);
    }
}

INSTANTIATE_TEST_SUITE_P(Sizes, FormLayout, testing::Values(1.0, 1.5, 2.0),
    [](const auto& size) { return std::to_string(static_cast<int>(size.param * 100)); });

}
}
