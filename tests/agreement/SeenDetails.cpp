#include "tests/agreement/SeenDetails.h"

#include "control/GridColumns.h"
#include "qt/CourseView.h"
#include "qt/DetailsHeading.h"
#include "qt/DetailsPane.h"
#include "qt/FieldList.h"
#include "qt/GridView.h"
#include "records/RecordFields.h"
#include "toolkit/QtText.h"

#include <QCoreApplication>
#include <QRegularExpression>

namespace health::test {

namespace {

QString emptyDiffer(const DetailsPane& pane, const QString& fields)
{
    const QString heading = pane.headingText();
    const bool saysNothing = heading.isEmpty() || heading.startsWith("Select a record");
    const bool hasPicture = pane.findChild<CourseView*>()->picture();
    return saysNothing && fields.isEmpty() && !hasPicture
        ? QString()
        : QStringLiteral("no record is selected, but the details show \"%1\" and \"%2\"").arg(heading, fields);
}

// The beginning of the heading: kind and date of a row of the list.
QString headingOfRow(const Grid& grid, int row)
{
    static const QRegularExpression start("^(\\d\\d/\\d\\d/\\d{4}(?: \\d\\d:\\d\\d)?):");
    const QString label = toQString(grid.text(row, GridColumn::Label));
    const auto date = start.match(toQString(grid.text(row, GridColumn::Summary)));
    return date.hasMatch() ? label + u' ' + date.captured(1) : label;
}

}

QString detailsDiffer(kalmevRepHistCtrl& control, const PanelView& panel)
{
    auto& pane = *panel.findChild<DetailsPane*>();
    const Grid& grid = control.fgData;
    if (pane.isHidden() || !grid.isDrawing())
        return {};
    QCoreApplication::sendPostedEvents(&pane); // changes are shown together
    const QString fields = pane.findChild<FieldList*>()->text(true);
    if (grid.row() == -1)
        return emptyDiffer(pane, fields);
    const QString heading = pane.headingText();
    if (!heading.startsWith(headingOfRow(grid, grid.row())))
        return QStringLiteral("the details show \"%1\" for \"%2\"").arg(heading, headingOfRow(grid, grid.row()));
    const auto records = listedRecords(control);
    const auto row = static_cast<std::size_t>(grid.row());
    if (records[row].type->number == RecordTypeNumber::FunctionalStatus)
        return {}; // its picture shows the items
    for (const RecordField& field : recordFields(records[row], recordBefore(records, row))) {
        const QString text = toQString(field.caption + L": " + field.value);
        if (!fields.contains(text))
            return QStringLiteral("the details lack \"%1\" of \"%2\"").arg(text, heading);
    }
    return {};
}

QStringList rowsOnScreen(const PanelView& panel)
{
    QStringList texts;
    const QAbstractItemModel& rows = *panel.findChild<GridView*>()->model();
    for (int row = 0; row < rows.rowCount(); ++row) {
        for (int column = 0; column < rows.columnCount(); ++column)
            texts.append(rows.index(row, column).data().toString());
    }
    return texts;
}

QWidget* partOfDetails(const PanelView& panel, int part)
{
    const auto& pane = *panel.findChild<DetailsPane*>();
    QWidget* const parts[] { pane.findChild<FoldButton*>(), pane.findChild<FieldList*>(),
        pane.findChild<CourseView*>()->findChildren<QWidget*>(Qt::FindDirectChildrenOnly).value(0) };
    return parts[part]->isVisible() ? parts[part] : nullptr;
}

}
