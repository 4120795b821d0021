#include "host/windows/RowList.h"

#include "toolkit/Inks.h"
#include "toolkit/Measures.h"
#include "toolkit/SpokenItems.h"

#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QStyledItemDelegate>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace health {

namespace {

constexpr int UsualLetters = 24;

QRect textPlace(const QRect& cell, const QWidget& widget)
{
    const int margin = Measures(widget).units(2);
    return cell.adjusted(margin, 0, -margin, 0);
}

// Captions in quiet letters on the list's ground, with a thin line below.
class Captions : public QHeaderView {
public:
    Captions()
        : QHeaderView(Qt::Horizontal)
    {
    }

protected:
    void paintSection(QPainter* painter, const QRect& place, int column) const override
    {
        painter->save();
        painter->fillRect(place, palette().color(QPalette::Base));
        QRect line = place;
        line.setTop(place.bottom() + 1 - Measures(*this).hairline());
        painter->fillRect(line, colourOf(Ink::Hairline, palette()));
        painter->setPen(colourOf(Ink::Quiet, palette()));
        const auto alignment = model()->headerData(column, Qt::Horizontal, Qt::TextAlignmentRole).toInt();
        painter->drawText(textPlace(place, *this), alignment, model()->headerData(column, Qt::Horizontal).toString());
        painter->restore();
    }

    void paintEvent(QPaintEvent* event) override
    {
        QPainter(viewport()).fillRect(event->rect(), palette().color(QPalette::Base));
        QHeaderView::paintEvent(event);
    }

    QSize sizeHint() const override { return { QHeaderView::sizeHint().width(), Measures(*this).fieldHeight() }; }
};

// The row is framed, not the cell.
class RowDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& given, const QModelIndex& index) const override
    {
        QStyleOptionViewItem option = given;
        initStyleOption(&option, index);
        const QWidget& view = *option.widget;
        const bool heading = !index.flags().testFlag(Qt::ItemIsEnabled);
        painter->save();
        if (option.state.testFlag(QStyle::State_Selected))
            painter->fillRect(option.rect, colourOf(Ink::SelectionTint, QApplication::palette()));
        painter->setFont(heading ? semibold(option.font) : option.font);
        painter->setPen(colourOf(heading ? Ink::Quiet : Ink::Words, QApplication::palette()));
        const QRect place = textPlace(option.rect, view);
        painter->drawText(place, static_cast<int>(option.displayAlignment) | Qt::TextSingleLine,
            QFontMetrics(painter->font()).elidedText(option.text, Qt::ElideRight, place.width()));
        painter->restore();
    }
};

}

RowList::RowList(const QStringList& headings)
    : m_letters(headings.size(), UsualLetters)
{
    setColumnCount(static_cast<int>(headings.size()));
    ControlStyle::giveTo(*this);
    setHorizontalHeader(new Captions);
    setItemDelegate(new RowDelegate(this));
    setHorizontalHeaderLabels(headings);
    new SpokenItems(*this);
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setTabKeyNavigation(false);
    setHorizontalScrollMode(ScrollPerPixel);
    setShowGrid(false);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    horizontalHeader()->setHighlightSections(false);
    for (int column = 0; column < columnCount(); ++column)
        horizontalHeaderItem(column)->setTextAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    layOut();
}

void RowList::setColumn(int column, int letters, Qt::Alignment alignment)
{
    m_letters[column] = letters;
    horizontalHeaderItem(column)->setTextAlignment(alignment | Qt::AlignVCenter);
    layOut();
}

void RowList::layOut()
{
    verticalHeader()->setDefaultSectionSize(Measures(*this).checkRow());
    const int last = columnCount() - 1;
    int rest = viewport()->width();
    for (int column = 0; column <= last; ++column) {
        const int width = fontMetrics().horizontalAdvance(u'x') * m_letters[column];
        setColumnWidth(column, column == last ? std::max(width, rest) : width);
        rest -= width;
    }
}

void RowList::setRows(const QList<Row>& rows)
{
    m_keys.clear();
    clearSpans();
    setRowCount(0);
    setRowCount(static_cast<int>(rows.size()));
    for (int row = 0; row < rows.size(); ++row) {
        m_keys.append(rows[row].key);
        if (rows[row].isHeading)
            addHeading(row, rows[row].texts.value(0));
        else
            addRow(row, rows[row]);
    }
    layOut();
    selectFirst();
}

void RowList::addHeading(int row, const QString& text)
{
    for (int column = 0; column < columnCount(); ++column) {
        auto* const item = new QTableWidgetItem(column == 0 ? text : QString());
        item->setFlags(Qt::NoItemFlags);
        item->setTextAlignment(Qt::AlignLeft | Qt::AlignVCenter);
        setItem(row, column, item);
    }
    if (columnCount() > 1)
        setSpan(row, 0, 1, columnCount());
}

void RowList::addRow(int row, const Row& content)
{
    for (int column = 0; column < columnCount(); ++column) {
        auto* const item = new QTableWidgetItem(content.texts.value(column));
        item->setTextAlignment(Qt::Alignment(horizontalHeaderItem(column)->textAlignment()));
        item->setToolTip(item->text()); // what does not fit ends in an ellipsis
        setItem(row, column, item);
    }
}

int RowList::selectableRows() const
{
    int rows = 0;
    for (int row = 0; row < rowCount(); ++row)
        rows += item(row, 0)->flags().testFlag(Qt::ItemIsEnabled) ? 1 : 0;
    return rows;
}

void RowList::selectKey(const QString& key)
{
    if (const auto row = m_keys.indexOf(key); row >= 0)
        selectRow(static_cast<int>(row));
}

// A heading is never the last row.
void RowList::selectFirst()
{
    for (int row = 0; row < rowCount(); ++row) {
        if (item(row, 0)->flags().testFlag(Qt::ItemIsEnabled)) {
            selectRow(row);
            return scrollToTop();
        }
    }
}

void RowList::selectLast() { selectRow(rowCount() - 1); }

bool RowList::moveToEnd(const QKeyEvent& key)
{
    if (key.modifiers() != Qt::NoModifier || (key.key() != Qt::Key_Home && key.key() != Qt::Key_End))
        return false;
    if (key.key() == Qt::Key_Home)
        selectFirst();
    else
        selectLast();
    return true;
}

void RowList::keyPressEvent(QKeyEvent* event)
{
    if (!moveToEnd(*event))
        QTableWidget::keyPressEvent(event);
}

void RowList::changeEvent(QEvent* event)
{
    QTableWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        layOut();
}

void RowList::resizeEvent(QResizeEvent* event)
{
    QTableWidget::resizeEvent(event);
    layOut();
}

void RowList::paintEvent(QPaintEvent* event)
{
    FocusFramed::paintEvent(event);
    if (currentRow() < 0)
        return;
    QPainter painter(viewport());
    const QRect row(0, rowViewportPosition(currentRow()), viewport()->width(), rowHeight(currentRow()));
    if (m_led || hasFocus())
        return drawFocus(painter, row, *this);
    painter.setPen(QPen(colourOf(Ink::FieldFrame, palette()), 1));
    painter.drawRect(row.adjusted(0, 0, -1, -1));
}

}
