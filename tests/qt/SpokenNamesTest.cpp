// The names that screen readers speak in each form.
#include "tests/support/EveryForm.h"

#include <QAccessible>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>
#include <QRegularExpression>

#include <gtest/gtest.h>

namespace health::test {
namespace {

QString nameOf(QWidget* widget) { return QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name); }

// Role and name of each widget that takes the focus or is a button; of an option also the name of its group.
QStringList controlsOf(QWidget& window)
{
    QStringList controls;
    for (QWidget* const widget : window.findChildren<QWidget*>()) {
        const bool isButton = qobject_cast<QAbstractButton*>(widget);
        if (!widget->isVisible() || widget->focusProxy() || (widget->focusPolicy() == Qt::NoFocus && !isButton))
            continue;
        const bool isOption = qobject_cast<QRadioButton*>(widget);
        controls.append(QString::number(QAccessible::queryAccessibleInterface(widget)->role()) + u' ' + nameOf(widget)
            + (isOption ? u' ' + nameOf(widget->parentWidget()) : QString()));
    }
    return controls;
}

// The accessibility bus (walk_windows.py) sees a few forms; this one sees them all.
TEST(SpokenNames, EveryControlOfEveryFormHasItsOwn)
{
    static const QRegularExpression spoken("^\\d+ [^&]*\\w[^&]*$", QRegularExpression::UseUnicodePropertiesOption);
    ShownForms forms;
    forms.showAll([](QWidget& window) {
        const QStringList controls = controlsOf(window);
        EXPECT_GT(controls.size(), 2) << window.windowTitle().toStdString();
        for (const QString& control : controls)
            EXPECT_TRUE(spoken.match(control).hasMatch() && controls.count(control) == 1)
                << window.windowTitle().toStdString() << ": " << control.toStdString();
    });
}

TEST(SpokenNames, FollowTheCaptions)
{
    ShownForms forms;
    forms.show<frmRefusal>([](QWidget& window) {
        const auto names = [&] { return controlsOf(window).join(u'|'); };
        auto* const list = window.findChild<QListWidget*>();
        EXPECT_EQ(nameOf(list), "Refusal Type");
        EXPECT_TRUE(names().contains("Find Refusal Item")) << names().toStdString();
        list->setCurrentRow(1);
        list->item(1)->setCheckState(Qt::Checked);
        EXPECT_TRUE(names().contains("Find Exam")) << names().toStdString();
        EXPECT_FALSE(names().contains("Refusal Item")) << names().toStdString();
    });
}

TEST(SpokenNames, StateIsSpokenToo)
{
    ShownForms forms;
    // A status beside its label has its own text as name, not the caption of the label.
    forms.show<frmAsthma>(
        [](QWidget& window) {
            QStringList texts;
            for (QLabel* const label : window.findChildren<QLabel*>())
                texts.append(nameOf(label));
            EXPECT_TRUE(texts.contains("Active")) << texts.join(u'|').toStdString();
        },
        [](frmAsthma& form) { form.setHeight(frmAsthma::RegistryHeight); });
    // The short names of the counts are explained where the focus is.
    forms.show<frmRepHist>([](QWidget& window) {
        auto* const field = window.findChild<QLineEdit*>();
        EXPECT_EQ(nameOf(field), "G");
        field->setFocus();
        QFocusEvent focus(QEvent::FocusIn);
        QCoreApplication::sendEvent(field, &focus);
        EXPECT_EQ(QAccessible::queryAccessibleInterface(field)->text(QAccessible::Description), "Gravidity, 0 to 99");
    });
    // The choices and their states.
    forms.show<frmInf>([](QWidget& window) {
        auto* const list = window.findChild<QListWidget*>();
        list->item(4)->setCheckState(Qt::Checked);
        QAccessibleInterface* const node = QAccessible::queryAccessibleInterface(list);
        ASSERT_EQ(node->childCount(), 5);
        EXPECT_EQ(node->child(2)->text(QAccessible::Name), "1/2 Breast & 1/2 Formula");
        EXPECT_FALSE(node->child(3)->state().checked);
        EXPECT_TRUE(node->child(4)->state().checked);
    });
}

TEST(SpokenNames, AnswerOfADropDownListIsDescribed)
{
    ShownForms forms;
    forms.show<frmAsthma>([](QWidget& window) {
        auto* const list = window.findChild<QComboBox*>();
        const auto description = [&] { return list->accessibleDescription(); };
        QTest::keyClick(list, Qt::Key_Down);
        ASSERT_FALSE(list->currentText().isEmpty());
        EXPECT_TRUE(description().startsWith(list->currentText() + ". Delete clears")) << qPrintable(description());
        QTest::keyClick(list, Qt::Key_Delete);
        EXPECT_FALSE(description().contains("Delete clears")) << qPrintable(description());
    });
}

}
}
