#include "tests/agreement/Agreement.h"

#include "qt/ChoiceViews.h"
#include "qt/ComboBoxView.h"
#include "qt/ControlViews.h"
#include "qt/DateView.h"
#include "qt/FieldViews.h"
#include "qt/GridView.h"
#include "qt/TextViews.h"
#include "toolkit/QtText.h"

#include <QApplication>

namespace health::test {

namespace {

QString differs(const char* what, const QString& screen, const QString& form)
{
    if (screen == form)
        return {};
    return QStringLiteral("%1: the screen has \"%2\", the form \"%3\"").arg(QLatin1String(what), screen, form);
}

QString onOff(bool on) { return on ? QStringLiteral("on") : QStringLiteral("off"); }

// The rows, then the selected row.
QString gridText(const Grid& grid)
{
    QStringList texts;
    for (int row = 0; grid.isDrawing() && row < grid.rowCount(); ++row) {
        for (int column = 0; column < grid.columnCount(); ++column) {
            if (!grid.column(column).hidden)
                texts.append(toQString(grid.text(row, column)));
        }
    }
    return texts.join(u'|') + QString(" row %1").arg(grid.row());
}

QString gridText(const QTableView& view)
{
    QStringList texts;
    for (int row = 0; row < view.model()->rowCount(); ++row) {
        for (int column = 0; column < view.model()->columnCount(); ++column)
            texts.append(view.model()->index(row, column).data().toString());
    }
    const QModelIndexList rows = view.selectionModel()->selectedRows();
    return texts.join(u'|') + QString(" row %1").arg(rows.isEmpty() ? -1 : rows.first().row());
}

template<typename List>
QString ticks(const List& list, const std::function<bool(int)>& isTicked)
{
    QString text;
    for (int i = 0; i < list.count(); ++i)
        text += onOff(isTicked(i));
    return text;
}

// The value that the user can change, as the screen shows it; nothing for a widget without one.
std::optional<QString> entryOn(const QWidget& widget)
{
    if (const auto* const view = dynamic_cast<const TextBoxView*>(&widget))
        return view->text();
    if (const auto* const view = dynamic_cast<const TextAreaView*>(&widget))
        return view->toPlainText();
    if (const auto* const view = dynamic_cast<const ComboBoxView*>(&widget))
        return view->currentText();
    if (const auto* const view = dynamic_cast<const DateView*>(&widget))
        return const_cast<DateView*>(view)->line()->text();
    if (const auto* const view = dynamic_cast<const CheckListView*>(&widget))
        return ticks(*view, [&](int i) { return view->item(i)->checkState() == Qt::Checked; });
    if (const auto* const button = qobject_cast<const QAbstractButton*>(&widget); button && button->isCheckable())
        return onOff(button->isChecked());
    return {};
}

// The value, by the kind of control.
QString valueDiffers(const Control& control, const QWidget& widget)
{
    const QString entry = entryOn(widget).value_or(QString());
    if (const auto* const box = dynamic_cast<const TextBox*>(&control))
        return differs("text", entry, toQString(box->text()).remove(u'\r'));
    if (const auto* const list = dynamic_cast<const ComboBox*>(&control)) {
        const int shown = dynamic_cast<const ComboBoxView&>(widget).currentIndex();
        return differs("choice", QString::number(shown), QString::number(list->listIndex()));
    }
    if (const auto* const date = dynamic_cast<const mevZvDate*>(&control))
        return differs("date", entry, toQString(date->shown()));
    if (const auto* const box = dynamic_cast<const CheckBox*>(&control))
        return differs("tick", entry, onOff(box->isChecked()));
    if (const auto* const option = dynamic_cast<const OptionButton*>(&control))
        return differs("option", entry, onOff(option->isChosen()));
    if (const auto* const list = dynamic_cast<const CheckList*>(&control)) {
        const int row = dynamic_cast<const CheckListView&>(widget).currentRow();
        return differs("list", QString::number(row) + entry,
            QString::number(list->listIndex()) + ticks(*list, [&](int i) { return list->isChecked(i); }));
    }
    if (const auto* const grid = dynamic_cast<const Grid*>(&control))
        return differs("rows", gridText(dynamic_cast<const GridView&>(widget)), gridText(*grid));
    if (const auto* const view = dynamic_cast<const ButtonView*>(&widget))
        return differs("caption", view->text(), toQString(static_cast<const Button&>(control).caption()));
    if (const auto* const view = dynamic_cast<const LabelView*>(&widget))
        return differs("label", view->text(), toQString(static_cast<const Label&>(control).caption()));
    return {};
}

QString stateDiffers(const Control& control, const QWidget& widget)
{
    const bool usable = control.isEnabled() && (!control.frame() || control.frame()->canBeUsed());
    const QString enabled = differs("usable", onOff(widget.isEnabled()), onOff(usable));
    if (!enabled.isEmpty())
        return enabled;
    const QString visible = differs("visible", onOff(!widget.isHidden()), onOff(control.isVisible()));
    return visible.isEmpty() ? valueDiffers(control, widget) : visible;
}

QString nameOf(const QWidget* widget)
{
    if (!widget)
        return QStringLiteral("nothing");
    const auto* const button = qobject_cast<const QAbstractButton*>(widget);
    const QString words = button && !button->text().isEmpty() ? button->text() : widget->accessibleName();
    return QLatin1String(widget->metaObject()->className()) + u' ' + words;
}

QString focusDiffers(const FormDialog& dialog)
{
    QWidget* const view = dialog.widgets().value(dialog.form().activeControl());
    QWidget* const expected = view && view->focusProxy() ? view->focusProxy() : view;
    return differs("keyboard", nameOf(QApplication::focusWidget()), nameOf(expected));
}

QString defaultDiffers(const FormDialog& dialog)
{
    for (auto entry = dialog.widgets().begin(); entry != dialog.widgets().end(); ++entry) {
        const auto* const button = dynamic_cast<ButtonView*>(entry.value());
        if (button && button->isDefault() != (entry.key() == dialog.form().defaultButton()))
            return QStringLiteral("default button: %1").arg(nameOf(button));
    }
    return {};
}

}

QString disagreement(const FormDialog& dialog)
{
    for (auto entry = dialog.widgets().begin(); entry != dialog.widgets().end(); ++entry) {
        const QString difference = stateDiffers(*entry.key(), *entry.value());
        if (!difference.isEmpty())
            return nameOf(entry.value()) + u' ' + difference;
    }
    const QString focus = focusDiffers(dialog);
    return focus.isEmpty() ? defaultDiffers(dialog) : focus;
}

QString disagreement(const kalmevRepHistCtrl& control, const PanelView& panel)
{
    const auto* const grid = panel.findChild<GridView*>();
    const auto* const types = panel.findChild<ComboBoxView*>();
    const QString rows = differs("rows", gridText(*grid), gridText(control.fgData));
    if (!rows.isEmpty())
        return rows;
    const QString type = stateDiffers(control.cboType, *types);
    if (!type.isEmpty())
        return QStringLiteral("type list ") + type;
    const auto buttons = panel.findChildren<ButtonView*>();
    for (const Button& command : control.cmd) {
        for (const ButtonView* const button : buttons) {
            if (button->text() == toQString(command.caption()) && button->isEnabled() != command.isEnabled())
                return QStringLiteral("command %1").arg(button->text());
        }
    }
    return {};
}

namespace {
// These options select the file of a lookup; they are saved only with its result.
bool namesFile(const QAbstractButton& button)
{
    return button.text() == "Outside &Provider" || button.text() == "&Facility";
}
}

QStringList shownValues(const FormDialog& dialog)
{
    std::map<QPair<int, int>, QString> byPlace;
    for (auto entry = dialog.widgets().begin(); entry != dialog.widgets().end(); ++entry) {
        const QWidget* const widget = entry.value();
        std::optional<QString> value = entryOn(*widget);
        if (const auto* const button = qobject_cast<const QAbstractButton*>(widget);
            !value || (button && namesFile(*button)))
            continue;
        if (!widget->isEnabled())
            value->clear(); // disabled values are not saved
        const QPoint place = widget->mapTo(&dialog, QPoint());
        byPlace[{ place.y(), place.x() }] = *value;
    }
    QStringList values;
    for (const auto& [place, value] : byPlace)
        values.append(value);
    return values;
}

}
