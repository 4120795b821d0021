// What a screen reader is told of each form.
#include "tests/support/EveryForm.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QCalendarWidget>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QTableView>
#include <QToolButton>

#include <gtest/gtest.h>

namespace health::test {
namespace {

bool isControl(QAccessible::Role role)
{
    static const std::set controls { QAccessible::PushButton, QAccessible::ButtonMenu, QAccessible::CheckBox,
        QAccessible::RadioButton, QAccessible::ComboBox, QAccessible::EditableText, QAccessible::SpinBox,
        QAccessible::List, QAccessible::Table, QAccessible::Tree, QAccessible::MenuItem };
    return controls.contains(role);
}

bool isCellsOwner(QAccessible::Role role)
{
    return role == QAccessible::Table || role == QAccessible::List || role == QAccessible::ComboBox;
}

using Visit = std::function<void(QAccessibleInterface&)>;

void walk(QAccessibleInterface* node, const Visit& visit)
{
    if (!node || node->state().invisible)
        return;
    visit(*node);
    for (int i = 0; !isCellsOwner(node->role()) && i < node->childCount(); ++i)
        walk(node->child(i), visit);
}

// Role and name of each control, in the order of the tree; an option's is told with its group.
QStringList controlsOf(QWidget& window)
{
    QStringList controls;
    walk(QAccessible::queryAccessibleInterface(&window), [&](QAccessibleInterface& node) {
        if (node.object() == &window || !(isControl(node.role()) || node.state().focusable))
            return;
        const bool option = node.role() == QAccessible::RadioButton;
        controls.append(QString::number(node.role()) + u' ' + node.text(QAccessible::Name)
            + (option ? u' ' + node.parent()->text(QAccessible::Name) : QString()));
    });
    return controls;
}

// Names of their own that can be spoken.
void expectNames(QWidget& window)
{
    SCOPED_TRACE(window.windowTitle().toStdString());
    EXPECT_FALSE(QAccessible::queryAccessibleInterface(&window)->text(QAccessible::Name).isEmpty());
    const QStringList controls = controlsOf(window);
    EXPECT_FALSE(controls.isEmpty());
    for (const QString& control : controls) {
        const QString name = control.section(u' ', 1);
        EXPECT_TRUE(std::any_of(name.begin(), name.end(), [](QChar letter) { return letter.isLetterOrNumber(); }))
            << "no name: " << control.toStdString();
        EXPECT_FALSE(name.contains(u'&')) << control.toStdString();
        EXPECT_EQ(controls.count(control), 1) << control.toStdString();
    }
}

QString nameOf(QWidget* widget) { return QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name); }

TEST(SpokenNames, EveryControlOfEveryFormHasItsOwn)
{
    ShownForms forms;
    int shown = 0;
    forms.showAll([&](QWidget& window) {
        ++shown;
        expectNames(window);
    });
    EXPECT_EQ(shown, 14);
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
    forms.show<frmElderView>(
        [](QWidget& window) { EXPECT_EQ(nameOf(window.findChild<QTableView*>()), "View Functional Status Record"); });
    forms.show<frmInf>(
        [](QWidget& window) { EXPECT_EQ(nameOf(window.findChild<QListWidget*>()), "Add Infant Feeding Record"); });
}

TEST(SpokenNames, StateIsToldToo)
{
    ShownForms forms;
    // A status beside its label is told, not the label's caption twice.
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
        EXPECT_EQ(QAccessible::queryAccessibleInterface(field)->text(QAccessible::Description), "Gravidity");
    });
    // What can be chosen, and what is.
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

TEST(SpokenNames, CalendarIsNamed)
{
    ShownForms forms;
    forms.show<frmTxc>([](QWidget& window) {
        QTimer::singleShot(20, [] {
            QWidget* const popup = QApplication::activePopupWidget();
            ASSERT_NE(popup, nullptr);
            const QString name = "Date Initiated calendar";
            EXPECT_EQ(nameOf(popup->findChild<QCalendarWidget*>()), name);
            EXPECT_EQ(nameOf(popup->findChild<QTableView*>()), name);
            int buttons = 0;
            for (QToolButton* const button : popup->findChildren<QToolButton*>()) {
                EXPECT_FALSE(nameOf(button).isEmpty()) << button->objectName().toStdString();
                ++buttons;
            }
            EXPECT_EQ(buttons, 4); // back, month, year, on
            popup->close();
        });
        for (auto* const button : window.findChildren<QToolButton*>()) {
            if (nameOf(button) == "Date Initiated calendar")
                button->click();
        }
    });
}

}
}
