#include "tests/agreement/SeenRows.h"

#include "control/GridColumns.h"
#include "qt/FindBar.h"
#include "qt/GridView.h"
#include "qt/PillButton.h"
#include "toolkit/QtText.h"

#include <QComboBox>
#include <QLineEdit>
#include <QRegularExpression>

#include <algorithm>

namespace health::test {

namespace {

QString plain(const QString& text)
{
    return text.normalized(QString::NormalizationForm_D).remove(QRegularExpression("\\p{M}")).toCaseFolded();
}

QString choice(const FindBar& bar, const QString& name)
{
    for (const auto* const list : bar.findChildren<QComboBox*>()) {
        if (list->accessibleName() == name)
            return list->currentText();
    }
    return {};
}

QStringList chosenKinds(const FindBar& bar)
{
    QStringList kinds;
    for (const auto* const chip : bar.findChildren<PillButton*>()) {
        if (chip->isVisible() && chip->isChecked() && chip->text() != "All")
            kinds.append(chip->text());
    }
    return kinds;
}

// What the list shows of a record, and the date it begins with as "yyyymmdd hh:mm".
struct Row {
    explicit Row(const Grid& grid, int row)
        : label(toQString(grid.text(row, GridColumn::Label)))
        , summary(toQString(grid.text(row, GridColumn::Summary)))
    {
        static const QRegularExpression start("^(\\d\\d)/(\\d\\d)/(\\d{4})( \\d\\d:\\d\\d)?:");
        if (const auto match = start.match(summary); match.hasMatch())
            date = match.captured(3) + match.captured(1) + match.captured(2) + match.captured(4);
    }

    bool hasWords(const QString& words) const
    {
        const QString text = plain(label + u'\n' + summary);
        const QStringList all = plain(words).split(u' ', Qt::SkipEmptyParts);
        return std::all_of(all.begin(), all.end(), [&](const QString& word) { return text.contains(word); });
    }

    QString label;
    QString summary;
    QString date;
};

}

QList<int> expectedRows(const Grid& grid, const PanelView& panel)
{
    const auto& bar = *panel.findChild<FindBar*>();
    QList<int> rows;
    QStringList kinds;
    if (!grid.isDrawing())
        return rows;
    const bool filtered = bar.isOpen();
    const QStringList chosen = filtered ? chosenKinds(bar) : QStringList();
    const QString words = filtered ? bar.findChild<QLineEdit*>()->text() : QString();
    const QString year = filtered ? choice(bar, "Year") : QString();
    const QString order = filtered ? choice(bar, "Order") : QString();
    for (int i = 0; i < grid.rowCount(); ++i) {
        const Row row(grid, i);
        if (!kinds.contains(row.label))
            kinds.append(row.label);
        const bool isOfYear = year.isEmpty() || year == "any year" || row.date.startsWith(year);
        if (row.hasWords(words) && isOfYear && (chosen.isEmpty() || chosen.contains(row.label)))
            rows.append(i);
    }
    std::stable_sort(rows.begin(), rows.end(), [&](int a, int b) {
        const Row first(grid, a);
        const Row second(grid, b);
        if (order == "by kind" && first.label != second.label)
            return kinds.indexOf(first.label) < kinds.indexOf(second.label);
        return order != "as loaded" && !order.isEmpty() && first.date > second.date;
    });
    return rows;
}

Text recordSeenSelected(const Grid& grid, const PanelView& panel)
{
    const QModelIndexList seen = panel.findChild<GridView*>()->selectionModel()->selectedRows();
    const QList<int> rows = expectedRows(grid, panel);
    if (seen.isEmpty() || seen.first().row() >= rows.size())
        return {};
    return Text(grid.text(rows[seen.first().row()], GridColumn::Record));
}

}
