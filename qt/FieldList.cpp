#include "qt/FieldList.h"

#include "toolkit/Inks.h"
#include "toolkit/Measures.h"
#include "toolkit/QtText.h"
#include "toolkit/SpokenItems.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QStandardItemModel>
#include <QStyledItemDelegate>

#include <algorithm>
#include <utility>

namespace health {

using namespace Qt::StringLiterals;

namespace {

enum Column { Caption, Value, Before, Columns };

// Captions end at the axis; they and the former values are quieter than the values.
class FieldDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        const QSize size = QStyledItemDelegate::sizeHint(option, index);
        return { size.width() + gap(option, index), size.height() };
    }

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        option->displayAlignment = (index.column() == Caption ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignTop;
        if (index.column() == Value)
            return;
        const QColor quiet = colourOf(Ink::Quiet, option->palette);
        option->palette.setColor(QPalette::Text, quiet);
        option->palette.setColor(QPalette::HighlightedText, quiet);
    }

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        QStyleOptionViewItem narrow = option;
        if (option.state & QStyle::State_Selected)
            painter->fillRect(option.rect, option.palette.color(QPalette::Active, QPalette::Highlight));
        narrow.rect.adjust(0, 0, -gap(option, index), 0);
        narrow.state &= ~QStyle::State_HasFocus; // the row is tinted
        QStyledItemDelegate::paint(painter, narrow, index);
    }

private:
    static int gap(const QStyleOptionViewItem& option, const QModelIndex& index)
    {
        return index.column() == Before || !option.widget ? 0 : Measures(*option.widget).u();
    }
};

}

FieldList::FieldList(QWidget* parent)
    : FocusFramed(parent)
{
    setModel(new QStandardItemModel(0, Columns, this));
    setItemDelegate(new FieldDelegate(this));
    new SpokenItems(*this);
    setAccessibleName(u"Fields of the record"_s);
    setFrameShape(NoFrame);
    setShowGrid(false);
    setWordWrap(true);
    setTextElideMode(Qt::ElideNone);
    setEditTriggers(NoEditTriggers);
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setTabKeyNavigation(false);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    horizontalHeader()->hide();
    horizontalHeader()->setMinimumSectionSize(1);
    verticalHeader()->hide();
    verticalHeader()->setMinimumSectionSize(1);
    applyPalette();
}

void FieldList::setFields(const std::vector<RecordField>& fields)
{
    const int row = currentIndex().row();
    auto& items = static_cast<QStandardItemModel&>(*model());
    items.removeRows(0, items.rowCount());
    items.setHorizontalHeaderLabels({ u"Field"_s, u"Value"_s, u"Before"_s });
    for (const RecordField& field : fields) {
        items.appendRow({ new QStandardItem(toQString(field.caption)), new QStandardItem(toLines(field.value)),
            new QStandardItem(field.before.empty() ? QString() : u"was "_s + toLines(field.before)) });
    }
    resizeColumnsToContents();
    if (hasFocus() && items.rowCount() > 0)
        setCurrentIndex(items.index(std::clamp(row, 0, items.rowCount() - 1), Value));
}

int FieldList::naturalWidth() const
{
    int width = 0;
    for (int column = 0; column < Columns; ++column)
        width += sizeHintForColumn(column);
    return width;
}

int FieldList::fitTo(int width)
{
    const int caption = sizeHintForColumn(Caption);
    const int room = std::max(width - caption, Measures(*this).ems(4));
    int before = sizeHintForColumn(Before);
    int value = sizeHintForColumn(Value);
    if (value + before > room) {
        before = std::min(before, room / 2);
        value = room - before;
    }
    setColumnWidth(Caption, caption);
    setColumnWidth(Value, value);
    setColumnWidth(Before, std::max(before, room - value));
    const int line = fontMetrics().height() + Measures(*this).hairline();
    int height = 0;
    for (int row = 0; row < model()->rowCount(); ++row) {
        const int needed = std::max(line, sizeHintForRow(row));
        setRowHeight(row, needed);
        height += needed;
    }
    return height;
}

// --- Copying ---

QString FieldList::line(int row) const
{
    const auto textOf = [&](int column) { return model()->index(row, column).data().toString(); };
    const QString before = textOf(Before);
    QString text = textOf(Caption) + u": "_s + textOf(Value);
    return before.isEmpty() ? text : text + u" ("_s + before + u')';
}

QString FieldList::text(bool all) const
{
    QStringList lines;
    for (int row = 0; row < model()->rowCount(); ++row) {
        if (all || selectionModel()->isRowSelected(row))
            lines.append(line(row));
    }
    return lines.join(u'\n');
}

void FieldList::copy() const
{
    if (const QString selected = text(false); !selected.isEmpty())
        QApplication::clipboard()->setText(selected);
}

void FieldList::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Copy))
        copy();
    else
        FocusFramed::keyPressEvent(event);
}

void FieldList::contextMenuEvent(QContextMenuEvent* event)
{
    QMenu menu(this);
    menu.addAction(u"&Copy"_s, this, [this] { copy(); })->setEnabled(!text(false).isEmpty());
    menu.addAction(u"Copy &All"_s, this, [this] { QApplication::clipboard()->setText(text(true)); });
    menu.exec(event->globalPos());
}

// --- Look ---

void FieldList::focusInEvent(QFocusEvent* event)
{
    FocusFramed::focusInEvent(event);
    if (!selectionModel()->hasSelection() && model()->rowCount() > 0) // Qt has made a line current, but not selected it
        setCurrentIndex(model()->index(std::max(0, currentIndex().row()), Value));
}

void FieldList::focusOutEvent(QFocusEvent* event)
{
    FocusFramed::focusOutEvent(event);
    if (event->reason() != Qt::PopupFocusReason && event->reason() != Qt::ActiveWindowFocusReason)
        clearSelection();
}

void FieldList::paintEvent(QPaintEvent* event)
{
    FocusFramed::paintEvent(event);
    if (hasFocus()) {
        QPainter painter(viewport());
        drawFocus(painter, viewport()->rect(), *parentWidget()); // in the colour that selected lines do not have
    }
}

void FieldList::changeEvent(QEvent* event)
{
    FocusFramed::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange)
        applyPalette();
}

// Selected lines are tinted, so that quiet words stay readable.
void FieldList::applyPalette()
{
    const QPalette application = QApplication::palette(this);
    const QColor tint = colourOf(Ink::SelectionTint, application);
    if (palette().color(QPalette::Active, QPalette::Highlight) == tint)
        return;
    QPalette tinted; // all other roles stay those of the application
    tinted.setColor(QPalette::Highlight, tint);
    tinted.setColor(QPalette::HighlightedText, application.color(QPalette::Active, QPalette::Text));
    setPalette(tinted);
}

}
