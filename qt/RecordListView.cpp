#include "qt/RecordListView.h"

#include "control/kalmevRepHistCtrl.h"
#include "qt/GridModel.h"
#include "qt/RecordDelegate.h"
#include "qt/RecordGutter.h"
#include "qt/ShownRecords.h"
#include "qt/ViewDesktop.h"
#include "toolkit/Inks.h"
#include "toolkit/QtText.h"

#include <QAction>
#include <QHeaderView>
#include <QPainter>

#include <algorithm>
#include <utility>

namespace health {

using namespace Qt::StringLiterals;

namespace {

constexpr TextView LoadingHint = L"Loading ...";
constexpr TextView NoRecordsHint = L"No personal health records.";
constexpr qint64 LoadingPatience = 300; // milliseconds; a short load shows nothing

ListState withoutPatient()
{
    return { u"Select a patient"_s, { u"Ctrl+O, then the beginning of the last name, or the number."_s },
        StateSymbol::Person };
}

ListState withoutRecords(const QString& patient)
{
    const QString whom = patient.isEmpty() ? u"yet"_s : u"for %1 yet"_s.arg(patient);
    return { u"No personal health records"_s,
        { u"Nothing has been recorded %1."_s.arg(whom), u"Choose a form above the list and press Add."_s },
        StateSymbol::Sheet };
}

}

RecordListView::RecordListView(ShownRecords& records, ViewDesktop& desktop, QWidget& area)
    : GridView(records.control().fgData, desktop, { u"Record"_s, u"Summary"_s }, nullptr)
    , m_records(records)
    , m_area(area)
    , m_rows(records, gridModel())
    , m_gutter(new RecordGutter(m_rows, *this))
    , m_delegate(new RecordDelegate(m_rows, *this))
    , m_busy(*viewport())
{
    setAccessibleName(u"Personal health records"_s);
    useRowHeader(*m_gutter);
    m_gutter->show();
    setItemDelegate(m_delegate);
    gridModel().setDescription([this](int gridRow) { return described(gridRow); });
    connect(
        selectionModel(), &QItemSelectionModel::selectionChanged, m_gutter->viewport(), qOverload<>(&QWidget::update));
    adoptColours();
    verticalHeader()->setDefaultSectionSize(heightOfLine());
    noteContents();
    connect(&records, &ShownRecords::rearranged, this, &RecordListView::rearrange);
}

void RecordListView::setAway(bool away)
{
    if (std::exchange(m_rows.isAway, away) != away)
        viewport()->update();
}

bool RecordListView::isLoading() const { return m_control.hint() == LoadingHint; }

// --- Changes ---

void RecordListView::mirror(Change change)
{
    if (change == Change::Contents && !m_control.isDrawing())
        keepPlace();
    m_records.gridChanged(change);
    if (change == Change::Contents)
        noteContents();
    if (change == Change::Selection)
        noteSelection();
    if (change == Change::Flashed)
        m_rows.news.see(m_control.flashedRow()); // this session has saved it
    if (change == Change::Hint)
        noteLoading();
    GridView::mirror(change);
    if (change == Change::Contents && m_control.isDrawing())
        m_place = -1;
    m_gutter->viewport()->update();
}

void RecordListView::keepPlace() { m_place = currentIndex().row(); }

// Where the selected row stood, if it is gone after a load.
int RecordListView::restingRow() const { return std::min(m_place, model()->rowCount() - 1); }

// A load that has failed leaves the hint as it was while loading, and its rows are not complete.
void RecordListView::noteContents()
{
    m_rows.reset();
    gridModel().showRows(m_records.rearrangedRows());
    if (!m_control.isDrawing())
        return;
    const kalmevRepHistCtrl& control = m_records.control();
    const long patient = control.listedPatient();
    if (std::exchange(m_patient, patient) != patient)
        m_place = -1;
    m_loadedAt = {};
    if (patient == 0 || isLoading())
        return;
    m_rows.news.expectRemoval(control.deletedKey());
    m_rows.news.show(patient, m_records.all(), control.unreadTypes());
    m_loadedAt = control.unreadTypes().empty() ? QTime::currentTime() : QTime();
}

// What was selected has been looked at. A load clears the selection for the time being.
void RecordListView::noteSelection()
{
    if (isLoading() || !m_control.isDrawing())
        return;
    const int selected = m_records.selected();
    const auto& all = m_records.all();
    const Text key = selected == -1 ? Text() : Text(all[static_cast<std::size_t>(selected)].key);
    if (key == m_lookedAt)
        return;
    for (std::size_t row = 0; row < all.size(); ++row) {
        if (all[row].key == m_lookedAt)
            m_rows.news.see(static_cast<int>(row));
    }
    m_lookedAt = key;
}

void RecordListView::noteLoading()
{
    m_busy.setRunning(isLoading());
    if (isLoading())
        m_loading.start();
    else
        m_loading.invalidate();
}

// --- What the list says ---

ListState RecordListView::state() const
{
    const kalmevRepHistCtrl& control = m_records.control();
    if (isLoading())
        return { u"Loading Personal Health Data"_s };
    if (control.listedPatient() == 0)
        return withoutPatient();
    if (m_control.hint() == NoRecordsHint && m_records.all().empty())
        return withoutRecords(toQString(control.patientName()));
    if (m_records.isFiltered() && m_records.rows().empty())
        return { u"No record matches"_s, { u"Escape shows all records."_s } };
    return {};
}

QString RecordListView::described(int gridRow) const
{
    const int row = const_cast<RecordListView*>(this)->gridModel().modelRow(gridRow);
    QStringList words = m_rows.marksInWords(row);
    QStringList gone = m_rows.goneBefore(row);
    if (row + 1 == model()->rowCount())
        gone.append(m_rows.goneBefore(row + 1));
    if (!gone.isEmpty())
        words.append(goneInWords(gone));
    return words.join(u". "_s);
}

// --- Look ---

void RecordListView::paintEvent(QPaintEvent* event)
{
    const ListState shown = state();
    if (shown.isEmpty()) {
        setRoom();
        GridView::paintEvent(event);
        return;
    }
    QPainter painter(viewport());
    painter.fillRect(event->rect(), palette().color(QPalette::Base));
    if (m_loading.isValid() && m_loading.elapsed() < LoadingPatience)
        return;
    const QRect middle = viewport()->rect().adjusted(-m_gutter->width(), 0, 0, 0);
    drawState(painter, middle, *this, shown);
    m_busy.paint(painter, symbolPlace(middle, *this, shown), colourOf(Ink::Quiet, palette()));
}

// With its part of the gutter.
QRect RecordListView::placeOfRow(int row) const
{
    return GridView::placeOfRow(row).adjusted(-m_gutter->width(), 0, 0, 0);
}

int RecordListView::heightOfLine() const
{
    const RowMeasures measures(*this);
    return measures.line + measures.aboveAndBelow;
}

int RecordListView::heightOfText(int row)
{
    setRoom();
    const RowMeasures measures(*this);
    const int lines = std::max(m_rows.text(row).lines, m_delegate->linesOfLabel(row, columnWidth(0)));
    return lines * measures.line + measures.aboveAndBelow;
}

void RecordListView::setRoom()
{
    const RowMeasures measures(*this);
    const int column = columnWidth(gridModel().columnCount() - 1);
    m_rows.setRoom(font(), column - measures.left - measures.right, measures.narrow);
}

void RecordListView::adoptColours() { gridModel().setHighlight(colourOf(Ink::Visit, palette())); }

void RecordListView::changeEvent(QEvent* event)
{
    GridView::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        adoptColours();
}

void RecordListView::focusInEvent(QFocusEvent* event)
{
    GridView::focusInEvent(event);
    m_gutter->viewport()->update();
}

void RecordListView::focusOutEvent(QFocusEvent* event)
{
    GridView::focusOutEvent(event);
    m_gutter->viewport()->update();
}

// Scrolls to the selected row; without one, to the top.
void RecordListView::rearrange()
{
    gridModel().showRows(m_records.rearrangedRows());
    GridView::mirror(Change::Contents);
    if (const int row = selectedRow(); row != -1)
        scrollTo(gridModel().index(row, 0));
    else
        scrollToTop();
}

void RecordListView::offerEntries()
{
    GridView::offerEntries();
    for (QAction* const action : m_menuActions)
        desktop().offerWithNextMenu(
            action->text(), [action] { action->trigger(); }, [action] { return action->isEnabled(); });
}

}
