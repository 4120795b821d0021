#include "qt/GridView.h"

#include "qt/GridDelegate.h"
#include "qt/GridHeading.h"
#include "qt/GridModel.h"
#include "qt/RowPainting.h"
#include "qt/Scale.h"
#include "toolkit/ControlStyle.h"
#include "toolkit/Measures.h"
#include "toolkit/QtText.h"
#include "toolkit/SpokenItems.h"

#include <QHeaderView>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QToolTip>

#include <utility>

namespace health {

namespace {

constexpr double LineHeight = 1.36; // of a row with one line, in em
constexpr double NoticeHeight = 1.6; // of the strip below the rows, in em

}

GridView::GridView(Grid& grid, ViewDesktop& desktop, QStringList headings, QWidget* parent)
    : Mirror(grid, parent)
    , m_desktop(desktop)
    , m_model(new GridModel(grid, std::move(headings), this))
    , m_flash(*viewport())
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
    setShowGrid(false);
    setItemDelegate(new GridDelegate(this));
    setHorizontalHeader(new GridHeading(this));
    horizontalHeader()->hide();
    useRowHeader(*verticalHeader());
    verticalHeader()->hide();
    mirrorLayout();
    mirrorHint();
    scrollToRow(grid.shownRow());
    connect(selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        update(); // the frame shows the focus while no row does
        viewport()->update(); // the frame of a row covers its neighbours' edges
    });
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
        m_flash.start(m_control.flashedRow());
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
    verticalHeader()->setDefaultSectionSize(heightOfLine());
    mirrorSelection();
    measureRowsInView();
}

void GridView::useRowHeader(QHeaderView& header)
{
    header.setSectionResizeMode(QHeaderView::Fixed);
    header.setMinimumSectionSize(1);
    setVerticalHeader(&header);
}

int GridView::heightOfLine() const { return Measures(*this).ems(LineHeight); }

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
    if (const int row = restingRow(); row != -1)
        selectionModel()->setCurrentIndex(m_model->index(row, 0), QItemSelectionModel::NoUpdate);
    else
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
    return m_control.hint().empty() || m_model->rowCount() == 0 ? 0 : Measures(*this).ems(NoticeHeight);
}

void GridView::paintEvent(QPaintEvent* event)
{
    FocusFramed::paintEvent(event);
    drawMarkedRows();
    if (!m_control.hint().empty())
        drawHint();
}

// The frame of the selected row shows the focus; without a row, the frame of the view does, if it has one.
void GridView::drawMarkedRows()
{
    QPainter painter(viewport());
    const QModelIndex current = currentIndex();
    if (current.isValid() && (selectedRow() == current.row() || hasFocus()))
        drawRowFrame(painter, placeOfRow(current.row()), *this, hasFocus());
    else if (frameShape() == NoFrame && hasFocus())
        drawFocus(painter, viewport()->rect(), *this);
    if (const int row = m_model->modelRow(m_flash.row()); row != -1)
        m_flash.paint(painter, placeOfRow(row));
}

QRect GridView::placeOfRow(int row) const
{
    return { 0, rowViewportPosition(row), viewport()->width(), rowHeight(row) };
}

// Below the rows a strip, in an empty grid the middle.
void GridView::drawHint()
{
    QPainter painter(viewport());
    const QString hint = toQString(m_control.hint());
    if (const int strip = hintHeight(); strip > 0)
        drawNotice(painter, viewport()->rect().adjusted(0, viewport()->height() - strip, 0, 0), *this, hint);
    else
        drawState(painter, viewport()->rect(), *this, { .title = hint });
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
    const int strip = row == m_model->rowCount() - 1 ? hintHeight() : 0;
    const int height = std::max(heightOfText(row), verticalHeader()->defaultSectionSize()) + strip;
    if (rowHeight(row) != height)
        verticalHeader()->resizeSection(row, height);
    return height;
}

int GridView::heightOfText(int row)
{
    const int padding = verticalHeader()->defaultSectionSize() - fontMetrics().height();
    return sizeHintForRow(row) + padding / 2;
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
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        mirrorLayout();
}

}
