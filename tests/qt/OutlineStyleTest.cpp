#include "qt/ChoiceViews.h"

#include <QApplication>
#include <QProxyStyle>

#include <gtest/gtest.h>

namespace health::test {
namespace {

QString baseStyle(const QWidget& widget) { return dynamic_cast<QProxyStyle&>(*widget.style()).baseStyle()->name(); }

TEST(OutlineStyle, WidgetsShareOneThatFollowsTheApplication)
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

}
}
