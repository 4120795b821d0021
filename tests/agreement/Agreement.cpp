#include "tests/agreement/Agreement.h"

#include "platform/controls/ControlVisitor.h"
#include "qt/ChoiceViews.h"
#include "qt/ComboBoxView.h"
#include "qt/DateView.h"
#include "qt/GridView.h"
#include "qt/TextViews.h"
#include "tests/agreement/SeenDetails.h"
#include "tests/agreement/SeenRows.h"
#include "toolkit/QtText.h"

#include <QAbstractButton>
#include <QApplication>
#include <QListWidget>
#include <QMetaProperty>
#include <QRegularExpression>

#include <numeric>

namespace health::test {

namespace {

QString differs(const char* what, const QString& screen, const QString& form)
{
    if (screen == form)
        return {};
    return QStringLiteral("%1: the screen has \"%2\", the form \"%3\"").arg(QLatin1String(what), screen, form);
}

// The first of some differences; empty if all are empty.
QString first(const QStringList& differences) { return differences.filter(QRegularExpression(".")).value(0); }

QString asText(bool on) { return QVariant(on).toString(); }

QList<int> allRows(const Grid& grid)
{
    QList<int> rows(grid.isDrawing() ? grid.rowCount() : 0);
    std::iota(rows.begin(), rows.end(), 0);
    return rows;
}

// The texts of these rows, then the place of the selected one.
QString gridText(const Grid& grid, const QList<int>& rows)
{
    QStringList texts;
    for (const int row : rows) {
        for (int column = 0; column < grid.columnCount(); ++column) {
            if (!grid.column(column).hidden)
                texts.append(toQString(grid.text(row, column)));
        }
    }
    const QString selected = grid.row() == -1 ? "none" : QString::number(rows.indexOf(grid.row()));
    return texts.join(u'|') + " row " + selected;
}

QString gridText(const QTableView& view)
{
    QStringList texts;
    for (int row = 0; row < view.model()->rowCount(); ++row) {
        for (int column = 0; column < view.model()->columnCount(); ++column)
            texts.append(view.model()->index(row, column).data().toString());
    }
    const QModelIndexList rows = view.selectionModel()->selectedRows();
    return texts.join(u'|') + " row " + (rows.isEmpty() ? "none" : QString::number(rows.first().row()));
}

QString ticks(int count, const std::function<bool(int)>& isTicked)
{
    QString text;
    for (int i = 0; i < count; ++i)
        text += u' ' + asText(isTicked(i));
    return text;
}

// The widget that takes the keys.
const QWidget& focused(const QWidget& widget) { return widget.focusProxy() ? *widget.focusProxy() : widget; }

// The value that the user can change, as the screen shows it; nothing for a widget without one.
std::optional<QString> entryOn(const QWidget& widget)
{
    if (const auto* const list = qobject_cast<const QListWidget*>(&widget))
        return ticks(list->count(), [&](int i) { return list->item(i)->checkState() == Qt::Checked; });
    if (widget.focusPolicy() == Qt::NoFocus)
        return {};
    if (const auto* const button = qobject_cast<const QAbstractButton*>(&widget); button && !button->isCheckable())
        return {};
    const QVariant value = focused(widget).metaObject()->userProperty().read(&focused(widget));
    return value.isValid() ? std::optional(value.toString()) : std::nullopt;
}

// Compares the value of a control with what its widget shows.
class ValueCheck : public ControlVisitor {
public:
    ValueCheck(Control& control, const QWidget& widget)
        : m_widget(widget)
    {
        control.accept(*this);
    }
    QString difference;

private:
    void visit(Button& button) override { compare("caption", property("text"), toQString(button.caption())); }
    void visit(CheckBox& box) override { compare("tick", property("checked"), asText(box.isChecked())); }
    void visit(CheckList& list) override
    {
        compare("list", property("currentRow") + *entryOn(m_widget),
            QString::number(list.listIndex()) + ticks(list.count(), [&](int i) { return list.isChecked(i); }));
    }
    void visit(ComboBox& list) override
    {
        compare("choice", property("currentIndex"), QString::number(list.listIndex()));
    }
    void visit(Grid& grid) override
    {
        compare("rows", gridText(dynamic_cast<const QTableView&>(m_widget)), gridText(grid, allRows(grid)));
    }
    void visit(Label& label) override { compare("label", property("text"), toQString(label.caption())); }
    void visit(OptionButton& option) override { compare("option", property("checked"), asText(option.isChosen())); }
    void visit(TextBox& box) override { compare("text", *entryOn(m_widget), toQString(box.text()).remove(u'\r')); }
    void visit(mevZvDate& date) override { compare("date", *entryOn(m_widget), toQString(date.shown())); }
    void visit(Image&) override { }
    void visit(Menu&) override { }
    void visit(MenuItem&) override { }
    void visit(UpDown&) override { }
    void visit(mevContainer&) override { }

    QString property(const char* name) const { return m_widget.property(name).toString(); }
    void compare(const char* what, const QString& screen, const QString& form)
    {
        difference = differs(what, screen, form);
    }

    const QWidget& m_widget;
};

QString nameOf(const QWidget* widget)
{
    if (!widget)
        return QStringLiteral("nothing");
    const QString caption = widget->property("text").toString();
    return QLatin1String(widget->metaObject()->className()) + u' '
        + (caption.isEmpty() ? widget->accessibleName() : caption);
}

QString controlDiffers(Control& control, const QWidget& widget)
{
    const bool usable = control.isEnabled() && (!control.frame() || control.frame()->canBeUsed());
    const QString difference = first({ differs("usable", asText(widget.isEnabled()), asText(usable)),
        differs("visible", asText(!widget.isHidden()), asText(control.isVisible())),
        ValueCheck(control, widget).difference });
    return difference.isEmpty() ? QString() : nameOf(&widget) + u' ' + difference;
}

}

QString disagreement(const FormDialog& dialog)
{
    QStringList differences;
    for (auto entry = dialog.widgets().begin(); entry != dialog.widgets().end(); ++entry) {
        differences.append(controlDiffers(*entry.key(), *entry.value()));
        if (const auto* const button = qobject_cast<const QPushButton*>(entry.value())) {
            differences.append(differs(
                "default button", asText(button->isDefault()), asText(entry.key() == dialog.form().defaultButton())));
        }
    }
    const QWidget* const active = dialog.widgets().value(dialog.form().activeControl());
    differences.append(
        differs("keyboard", nameOf(QApplication::focusWidget()), nameOf(active ? &focused(*active) : nullptr)));
    return first(differences);
}

QString disagreement(kalmevRepHistCtrl& control, const PanelView& panel)
{
    QStringList differences { controlDiffers(control.cboType, *panel.findChild<ComboBoxView*>()),
        differs("list", gridText(*panel.findChild<GridView*>()),
            gridText(control.fgData, expectedRows(control.fgData, panel))) };
    const auto buttons = panel.findChildren<QPushButton*>();
    for (std::size_t i = 0; i < control.cmd.size(); ++i)
        differences.append(controlDiffers(control.cmd[i], *buttons[static_cast<qsizetype>(i)]));
    differences.append(detailsDiffer(control, panel));
    return first(differences);
}

QStringList shownValues(const FormDialog& dialog)
{
    // These options select the file of a lookup; they are saved only with its result.
    static const QStringList filesOfLookups { "Outside &Provider", "&Facility" };
    QHash<const QWidget*, const QWidget*> byFocus;
    for (const QWidget* const widget : dialog.widgets())
        byFocus.insert(&focused(*widget), widget);
    QStringList values;
    // In the order of Tab: texts beside fields may move them against each other.
    for (const QWidget* next = dialog.nextInFocusChain(); next != &dialog; next = next->nextInFocusChain()) {
        const QWidget* const widget = byFocus.value(next);
        const std::optional<QString> value = widget ? entryOn(*widget) : std::nullopt;
        if (value && !filesOfLookups.contains(widget->property("text").toString()))
            values.append(widget->isEnabled() ? *value : QString()); // disabled ones are not saved
    }
    return values;
}

}
