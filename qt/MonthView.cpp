#include "qt/MonthView.h"

#include "qt/CalendarColours.h"
#include "toolkit/Measures.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QStyledItemDelegate>

namespace health {

using namespace std::chrono;

namespace {

// Draws the days: the current one filled or, if it is not allowed, framed; today underlined; refused days struck out.
class DayPainter : public QStyledItemDelegate {
public:
    DayPainter(const MonthModel& model, QWidget& view)
        : QStyledItemDelegate(&view)
        , m_model(model)
        , m_view(view)
    {
    }

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        const auto day = m_model.day(index);
        if (!day)
            return;
        const bool isAllowed = m_model.isAllowed(*day);
        const bool isCurrent = index == static_cast<const QTableView&>(m_view).currentIndex();
        const CalendarColours colours(m_view.palette());
        painter->save();
        painter->fillRect(option.rect, m_view.palette().color(QPalette::Base)); // over the style's selection
        painter->setRenderHint(QPainter::Antialiasing);
        if (isCurrent)
            drawCurrent(*painter, option.rect, isAllowed);
        QFont font = m_view.font();
        font.setStrikeOut(!isAllowed);
        painter->setFont(m_model.isToday(*day) ? semibold(font) : font);
        const QColor& onGround = isAllowed ? colours.day : colours.refusedDay;
        painter->setPen(isCurrent && isAllowed ? colours.currentDay : onGround);
        painter->drawText(option.rect, Qt::AlignCenter, index.data().toString());
        if (m_model.isToday(*day))
            drawToday(*painter, option.rect);
        painter->restore();
    }

private:
    void drawCurrent(QPainter& painter, const QRect& cell, bool isAllowed) const
    {
        const Measures measures(m_view);
        const double pen = measures.focusFrame();
        const CalendarColours colours(m_view.palette());
        painter.setPen(QPen(isAllowed ? colours.fill : colours.focus, pen));
        painter.setBrush(isAllowed ? QBrush(colours.fill) : Qt::NoBrush);
        const double inset = pen / 2 + measures.hairline();
        painter.drawRoundedRect(
            QRectF(cell).adjusted(inset, inset, -inset, -inset), measures.cornerRadius(), measures.cornerRadius());
    }

    // A bar below the number, in the number's colour.
    void drawToday(QPainter& painter, const QRect& cell) const
    {
        const Measures measures(m_view);
        const QRectF bar(cell.center().x() - measures.ems(0.4), cell.bottom() - measures.ems(0.3), measures.ems(0.8),
            measures.focusFrame());
        painter.fillRect(bar, painter.pen().color());
    }

    const MonthModel& m_model;
    QWidget& m_view;
};

// The first two letters of the weekdays, quiet and without frames; screen readers get the whole names.
class WeekdayHeader : public QHeaderView {
public:
    explicit WeekdayHeader(QWidget* parent)
        : QHeaderView(Qt::Horizontal, parent)
    {
        setSectionResizeMode(QHeaderView::Fixed);
        setHighlightSections(false);
    }

protected:
    void paintSection(QPainter* painter, const QRect& rect, int section) const override
    {
        painter->fillRect(rect, palette().color(QPalette::Base));
        painter->setPen(CalendarColours(palette()).weekday);
        painter->drawText(rect, Qt::AlignCenter, model()->headerData(section, Qt::Horizontal).toString().left(2));
    }
};

Moment movedByMonths(Moment day, int count)
{
    const year_month_day date { floor<days>(day) };
    const year_month_day moved = date + months { count };
    return local_days { moved.ok() ? moved : year_month_day { moved.year() / moved.month() / last } };
}

}

MonthView::MonthView(const DateRange& allowed, Moment day, Moment today, QWidget* parent)
    : QTableView(parent)
    , m_model(new MonthModel(allowed, today, this))
    , m_day(dateOf(day))
{
    setModel(m_model);
    setItemDelegate(new DayPainter(*m_model, *this));
    setHorizontalHeader(new WeekdayHeader(this));
    verticalHeader()->hide();
    setShowGrid(false);
    setFrameShape(QFrame::NoFrame);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    fitToFont();
    goTo(m_day);
}

void MonthView::goTo(Moment day)
{
    if (!hasText(day))
        return;
    const year_month_day before { floor<days>(m_day) };
    const year_month_day after { floor<days>(day) };
    m_day = day;
    if (before.year() != after.year() || before.month() != after.month() || !currentIndex().isValid()) {
        m_model->showMonthOf(day);
        Q_EMIT monthChanged();
    }
    selectionModel()->setCurrentIndex(m_model->indexOf(day), QItemSelectionModel::ClearAndSelect);
}

void MonthView::goByMonths(int count) { goTo(movedByMonths(m_day, count)); }

QSize MonthView::sizeHint() const
{
    return { horizontalHeader()->length(), horizontalHeader()->sizeHint().height() + verticalHeader()->length() };
}

void MonthView::fitToFont()
{
    const Measures measures(*this);
    horizontalHeader()->setMinimumSectionSize(0);
    horizontalHeader()->setDefaultSectionSize(measures.ems(2));
    verticalHeader()->setMinimumSectionSize(0);
    verticalHeader()->setDefaultSectionSize(measures.ems(1.6));
    updateGeometry();
}

void MonthView::changeEvent(QEvent* event)
{
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange && model())
        fitToFont();
}

// --- Keys and mouse ---

// False if the key does not move the day.
bool MonthView::move(const QKeyEvent& event)
{
    const int weekdayNumber = static_cast<int>(weekday { floor<days>(m_day) }.c_encoding());
    const int perPage = event.modifiers() & (Qt::ControlModifier | Qt::ShiftModifier) ? 12 : 1;
    switch (event.key()) {
    case Qt::Key_Left:
        return goTo(m_day - days { 1 }), true;
    case Qt::Key_Right:
        return goTo(m_day + days { 1 }), true;
    case Qt::Key_Up:
        return goTo(m_day - weeks { 1 }), true;
    case Qt::Key_Down:
        return goTo(m_day + weeks { 1 }), true;
    case Qt::Key_Home:
        return goTo(m_day - days { weekdayNumber }), true;
    case Qt::Key_End:
        return goTo(m_day + days { 6 - weekdayNumber }), true;
    case Qt::Key_PageUp:
        return goByMonths(-perPage), true;
    case Qt::Key_PageDown:
        return goByMonths(perPage), true;
    default:
        return false;
    }
}

void MonthView::keyPressEvent(QKeyEvent* event)
{
    const bool picks = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter || event->key() == Qt::Key_Space;
    event->setAccepted(picks || move(*event));
    if (picks && !event->isAutoRepeat()) // the user may still hold the key that opened the calendar
        pickIfAllowed(m_day);
}

void MonthView::mousePressEvent(QMouseEvent* event) { event->accept(); }

void MonthView::mouseMoveEvent(QMouseEvent* event) { event->accept(); }

void MonthView::mouseDoubleClickEvent(QMouseEvent* event) { event->accept(); }

void MonthView::mouseReleaseEvent(QMouseEvent* event)
{
    const auto day = m_model->day(indexAt(event->position().toPoint()));
    if (!day || event->button() != Qt::LeftButton)
        return;
    goTo(*day);
    pickIfAllowed(*day);
}

void MonthView::pickIfAllowed(Moment day)
{
    if (m_model->isAllowed(day))
        Q_EMIT picked(day);
}

void MonthView::wheelEvent(QWheelEvent* event) { event->accept(); }

}
