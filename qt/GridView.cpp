#include "qt/GridView.h"

#include "qt/ControlStyle.h"
#include "qt/GridModel.h"
#include "qt/Inks.h"
#include "qt/Measures.h"
#include "qt/Scale.h"
#include "qt/ViewDesktop.h"
#include "toolkit/QtText.h"
#include "toolkit/SpokenItems.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QTimer>
#include <QToolTip>

#include <utility>

namespace health {

using namespace Qt::StringLiterals;

namespace {
constexpr int RowFlashMilliseconds = 1500;
}

GridView::GridView(Grid& grid, ViewDesktop& desktop, QStringList headings, QWidget* parent)
    : Mirror(grid, parent)
    , m_desktop(desktop)
    , m_model(new GridModel(grid, std::move(headings), this))
{
    setModel(m_model);
    new SpokenItems(*this);
    ControlStyle::giveTo(*this);
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setTabKeyNavigation(false);
    setMouseTracking(true);
    setEditTriggers(NoEditTriggers);
    setHorizontalScrollMode(ScrollPerPixel);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn); // showing and hiding it would rewrap all rows
    setAlternatingRowColors(true);
    horizontalHeader()->hide();
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setMinimumSectionSize(1);
    applyPalette();
    mirrorLayout();
    mirrorHint();
    scrollToRow(grid.shownRow());
    connect(selectionModel(), &QItemSelectionModel::currentRowChanged, this, [this](const QModelIndex& current) {
        if (!m_mirroring && current.isValid())
            m_control.choose(m_model->gridRow(current.row()));
    });
}

void GridView::mirror(Change change)
{
    switch (change) {
    case Change::Contents:
        mirrorContents();
        break;
    case Change::Layout:
        mirrorLayout();
        break;
    case Change::ColumnsSized:
        sizeColumns();
        break;
    case Change::Hint:
        mirrorHint();
        break;
    case Change::Selection:
        mirrorSelection();
        break;
    case Change::Colours:
        // Coalesces the changes of many cells; bold text may need more lines.
        if (!std::exchange(m_coloursChanged, true))
            QMetaObject::invokeMethod(this, &GridView::mirrorColours, Qt::QueuedConnection);
        break;
    case Change::ScrolledTo:
        scrollToRow(m_control.shownRow());
        break;
    case Change::Flashed:
        flash(m_control.flashedRow());
        break;
    default:
        break;
    }
}

void GridView::mirrorContents()
{
    // Keep the scroll position across a reload (an empty model resets it).
    if (!m_control.isDrawing())
        m_scrolled = m_scrolled.value_or(verticalScrollBar()->value());
    const int scrolled = m_scrolled.value_or(verticalScrollBar()->value());
    {
        const QScopedValueRollback guard(m_mirroring, true);
        m_model->reset();
    }
    sizeColumns();
    mirrorSelection();
    measureRowsInView();
    if (!m_control.isDrawing())
        return;
    verticalScrollBar()->setValue(scrolled);
    m_scrolled.reset();
}

void GridView::mirrorColours()
{
    m_coloursChanged = false;
    m_model->coloursChanged();
    measureRowsInView();
}

void GridView::mirrorLayout()
{
    const QScopedValueRollback guard(m_mirroring, true);
    m_model->reset();
    setWordWrap(m_control.wordWrap());
    const Scale scale(*this);
    for (int column = 0; column < m_model->columnCount(); ++column) {
        const int width = m_control.column(m_model->gridColumn(column)).width;
        if (width >= 0)
            setColumnWidth(column, scale.pixels(width));
    }
    horizontalHeader()->setStretchLastSection(!m_control.hasSizedColumns());
    setTextElideMode(m_control.wordWrap() ? Qt::ElideNone : Qt::ElideRight);
    sizeColumns();
    bool headings = false;
    for (int column = 0; column < m_control.columnCount(); ++column)
        headings = headings || !m_control.column(column).heading.empty();
    horizontalHeader()->setVisible(headings);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + scale.pixels(90));
    mirrorSelection();
    measureRowsInView();
}

int GridView::selectedRow() const { return m_control.row() == -1 ? -1 : m_model->modelRow(m_control.row()); }

void GridView::scrollToRow(int gridRow)
{
    if (const int row = m_model->modelRow(gridRow); row != -1)
        scrollTo(m_model->index(row, 0));
}

void GridView::mirrorSelection()
{
    const QScopedValueRollback guard(m_mirroring, true);
    if (const int row = selectedRow(); row != -1) {
        selectRow(row);
        return;
    }
    clearSelection();
    selectionModel()->clearCurrentIndex();
}

// Fits the columns to their contents and extends the last one to the right edge; if they are wider, the grid scrolls.
void GridView::sizeColumns()
{
    if (!m_control.hasSizedColumns() || m_model->columnCount() == 0)
        return;
    horizontalHeader()->setStretchLastSection(false);
    resizeColumnsToContents();
    const int last = m_model->columnCount() - 1;
    const int room = viewport()->width() - columnViewportPosition(last) - horizontalOffset();
    setColumnWidth(last, std::max(columnWidth(last), room));
}

// --- Hint ---

void GridView::mirrorHint()
{
    setAccessibleDescription(toQString(m_control.hint()));
    measureRowsInView();
    viewport()->update();
}

// Height of the strip below the rows; the last row grows by it so that the strip covers no text.
int GridView::hintHeight() const
{
    return m_control.hint().empty() || m_model->rowCount() == 0 ? 0 : fontMetrics().height() * 3 / 2;
}

void GridView::paintEvent(QPaintEvent* event)
{
    FocusFramed::paintEvent(event);
    drawFlash();
    if (frameShape() == NoFrame && hasFocus()) { // else the frame shows it
        QPainter painter(viewport());
        drawFocus(painter, viewport()->rect(), *this);
    }
    if (m_control.hint().empty())
        return;
    QPainter painter(viewport());
    QRect place = viewport()->rect().adjusted(2, 2, -2, -2);
    if (const int strip = hintHeight(); strip > 0) {
        place.setTop(place.bottom() - strip);
        painter.fillRect(place, palette().color(QPalette::AlternateBase));
    }
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(place, Qt::AlignCenter | Qt::TextWordWrap, toQString(m_control.hint()));
}

// --- A row that was saved ---

void GridView::flash(int row)
{
    m_flashedRow = row;
    viewport()->update();
    QTimer::singleShot(RowFlashMilliseconds, this, [this] {
        m_flashedRow = -1;
        viewport()->update();
    });
}

void GridView::drawFlash()
{
    const int flashed = m_flashedRow == -1 ? -1 : m_model->modelRow(m_flashedRow);
    if (flashed == -1)
        return;
    QPainter painter(viewport());
    QColor colour = colourOf(Ink::Good, palette());
    const QRect row(0, rowViewportPosition(flashed), viewport()->width() - 1, rowHeight(flashed) - 1);
    painter.setPen(QPen(colour, Measures(*this).focusFrame()));
    colour.setAlphaF(0.2F);
    painter.setBrush(colour);
    painter.drawRect(row);
}

// --- Tool tips ---

bool GridView::isCut(const QModelIndex& index) const
{
    return !m_control.wordWrap() && sizeHintForIndex(index).width() > columnWidth(index.column());
}

// The tip stays visible while the mouse is over the cell.
bool GridView::viewportEvent(QEvent* event)
{
    if (event->type() != QEvent::ToolTip)
        return QTableView::viewportEvent(event);
    const auto* const help = static_cast<QHelpEvent*>(event);
    const QModelIndex index = indexAt(help->pos());
    QString tip = toToolTip(m_control.toolTip());
    if (tip.isEmpty() && index.isValid() && isCut(index))
        tip = toToolTip(toText(index.data().toString()));
    QToolTip::showText(help->globalPos(), tip, viewport(), index.isValid() ? visualRect(index) : QRect());
    return true;
}

// --- Row heights ---

int GridView::measureRow(int row)
{
    const int padding = verticalHeader()->defaultSectionSize() - fontMetrics().height();
    const int strip = row == m_model->rowCount() - 1 ? hintHeight() : 0;
    const int height = std::max(sizeHintForRow(row) + padding / 2, verticalHeader()->defaultSectionSize()) + strip;
    if (rowHeight(row) != height)
        verticalHeader()->resizeSection(row, height);
    return height;
}

void GridView::measureRowsInView()
{
    const int rows = m_model->rowCount();
    if (m_measuring || rows == 0 || !m_control.wordWrap())
        return;
    const QScopedValueRollback guard(m_measuring, true);
    const int room = viewport()->height();
    // The last screenful too: its heights determine the scroll bar's range.
    int used = 0;
    for (int row = rows - 1; row >= 0 && used < room; --row)
        used += measureRow(row);
    used = 0;
    for (int row = std::max(0, rowAt(0)); row < rows && used < room; ++row)
        used += measureRow(row);
    updateGeometries();
}

QSize GridView::sizeHint() const
{
    // The columns of fixed width plus about one sentence.
    int width = fontMetrics().averageCharWidth() * 40;
    for (int column = 0; column + 1 < m_model->columnCount(); ++column)
        width += columnWidth(column);
    return { std::max(width, QTableView::sizeHint().width()), QTableView::sizeHint().height() };
}

void GridView::resizeEvent(QResizeEvent* event)
{
    QTableView::resizeEvent(event);
    sizeColumns();
    measureRowsInView();
}

void GridView::scrollContentsBy(int dx, int dy)
{
    QTableView::scrollContentsBy(dx, dy);
    if (hintHeight() > 0)
        viewport()->update(); // the strip does not scroll
    measureRowsInView();
}

// --- Look ---

void GridView::applyPalette()
{
    m_model->setBackgrounds(palette().color(QPalette::Base), palette().color(QPalette::AlternateBase));
}

void GridView::setQuiet(bool quiet)
{
    if (std::exchange(m_quiet, quiet) == quiet)
        return;
    QPalette colours;
    if (quiet) {
        // Four parts background, one part text: grey in light and dark palettes.
        const QColor background = palette().color(QPalette::Base);
        const QColor text = palette().color(QPalette::Text);
        const auto between = [](int a, int b) { return (a * 4 + b) / 5; };
        colours.setColor(QPalette::Highlight,
            QColor(between(background.red(), text.red()), between(background.green(), text.green()),
                between(background.blue(), text.blue())));
        colours.setColor(QPalette::HighlightedText, text);
    }
    setPalette(colours);
}

void GridView::changeEvent(QEvent* event)
{
    QTableView::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        applyPalette();
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        mirrorLayout();
}

// --- The user ---

void GridView::contextMenuEvent(QContextMenuEvent* event)
{
    if (event->reason() == QContextMenuEvent::Keyboard) {
        openMenuByKey();
        return;
    }
    m_desktop.setPopUpPlace(event->globalPos());
    offerEntries();
    m_control.releaseMouse(MouseButton::Right, m_model->gridRow(rowAt(event->pos().y())));
}

// The menu key opens the menu beside the selected row.
void GridView::openMenuByKey()
{
    const int row = selectedRow();
    const int below = row == -1 ? 0 : rowViewportPosition(row) + rowHeight(row);
    m_desktop.setPopUpPlace(viewport()->mapToGlobal(QPoint(columnViewportPosition(m_model->columnCount() - 1), below)));
    offerEntries();
    m_control.releaseMouse(MouseButton::Right, m_model->gridRow(row));
}

// Copies the row that is selected when the menu opens: a right click selects the row under it first.
void GridView::offerEntries()
{
    m_desktop.offerWithNextMenu(
        u"&Copy"_s, [this] { copyRow(); }, [this] { return selectedRow() != -1; });
}

// The shown texts, separated by tabs.
void GridView::copyRow()
{
    const int row = selectedRow();
    if (row == -1)
        return;
    QStringList texts;
    for (int column = 0; column < m_model->columnCount(); ++column)
        texts.append(m_model->index(row, column).data().toString());
    QApplication::clipboard()->setText(texts.join(u'\t'));
}

void GridView::keyPressEvent(QKeyEvent* event)
{
    const int key = event->key();
    const bool enter = key == Qt::Key_Return || key == Qt::Key_Enter;
    if (key == Qt::Key_Menu || (key == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier)) {
        openMenuByKey();
    } else if (event->matches(QKeySequence::Copy)) {
        copyRow();
    } else if ((key == Qt::Key_Home || key == Qt::Key_End) && !(event->modifiers() & ~Qt::ControlModifier)) {
        const int last = m_model->rowCount() - 1;
        if (last >= 0)
            setCurrentIndex(m_model->index(key == Qt::Key_Home ? 0 : last, 0));
    } else if (!enter || selectedRow() == -1) {
        QTableView::keyPressEvent(event);
    } else if (!event->isAutoRepeat()) { // a key held down would also press the opened form's default button
        m_control.doubleClick(m_control.row());
    }
}

void GridView::mouseMoveEvent(QMouseEvent* event)
{
    const QModelIndex index = indexAt(event->position().toPoint());
    m_control.moveMouse(m_model->gridRow(index.row()), index.isValid() ? m_model->gridColumn(index.column()) : -1);
    QTableView::mouseMoveEvent(event);
}

void GridView::leaveEvent(QEvent* event)
{
    m_control.moveMouse(-1, -1);
    QTableView::leaveEvent(event);
}

// Unlike Qt's table, does not select a row on focus; an arrow key does.
void GridView::focusInEvent(QFocusEvent* event)
{
    const QScopedValueRollback guard(m_mirroring, true);
    QTableView::focusInEvent(event);
    if (m_control.row() == -1)
        mirrorSelection();
}

// Ctrl+click and clicks beside the rows keep the selection, because the commands act on the selected row.
QItemSelectionModel::SelectionFlags GridView::selectionCommand(const QModelIndex& index, const QEvent* event) const
{
    return !index.isValid() || QTableView::selectionCommand(index, event) == QItemSelectionModel::NoUpdate
        ? QItemSelectionModel::NoUpdate
        : QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows;
}

void GridView::mouseDoubleClickEvent(QMouseEvent* event)
{
    QTableView::mouseDoubleClickEvent(event);
    const int row = rowAt(event->position().toPoint().y());
    if (event->button() == Qt::LeftButton && row != -1)
        m_control.doubleClick(m_model->gridRow(row));
}

}
