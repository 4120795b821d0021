#include "qt/ListArea.h"

#include "control/kalmevRepHistCtrl.h"
#include "qt/FindBar.h"
#include "qt/RecordListView.h"
#include "qt/ShownRecords.h"

#include <QApplication>
#include <QKeyEvent>
#include <QSplitter>
#include <QVBoxLayout>

#include <algorithm>

namespace health {

ListArea::ListArea(ShownRecords& records, ViewDesktop& desktop, QWidget* parent)
    : QWidget(parent)
    , m_records(records)
    , m_column(new QVBoxLayout(this))
    , m_find(new FindBar(records))
    , m_splitter(new QSplitter(Qt::Vertical))
    , m_list(new RecordListView(records, desktop, *this))
    , m_share(ViewState().detailsShare)
{
    m_column->setContentsMargins(0, 0, 0, 0);
    m_column->setSpacing(0);
    m_column->addWidget(m_find);
    m_column->addWidget(m_splitter, 1);
    m_splitter->setChildrenCollapsible(false);
    m_splitter->addWidget(m_list);
    m_list->installEventFilter(this);
    connect(m_splitter, &QSplitter::splitterMoved, this, &ListArea::keepShare);
    connect(m_find, &FindBar::leftForList, this, &ListArea::goToList);
    connect(m_find, &FindBar::closing, m_list, [this] { m_list->setFocus(Qt::OtherFocusReason); });
}

void ListArea::addStrip(QWidget& strip) { m_column->insertWidget(m_column->indexOf(m_splitter), &strip); }

// --- From the bar to the list ---

// Selects the first row if none is selected.
void ListArea::goToList()
{
    m_list->setFocus(Qt::OtherFocusReason);
    m_arrived.start();
    if (m_records.selected() == -1 && !m_records.rows().empty())
        m_records.control().fgData.choose(m_records.rows().front());
}

// The second Enter of a hurried user, meant for the bar, must not open a form.
bool ListArea::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    const bool hurried = m_arrived.isValid() && m_arrived.elapsed() < QApplication::doubleClickInterval();
    return hurried && (key == Qt::Key_Return || key == Qt::Key_Enter);
}

// --- The details ---

void ListArea::setDetails(QWidget& details)
{
    m_details = &details;
    m_splitter->addWidget(m_details);
    shareHeight();
}

void ListArea::shareHeight()
{
    if (m_details)
        m_splitter->setSizes({ m_splitter->height() * (100 - m_share) / 100, m_splitter->height() * m_share / 100 });
}

void ListArea::keepShare()
{
    if (const int height = m_splitter->height(); m_details && !m_details->isHidden() && height > 0)
        m_share = std::clamp(m_details->height() * 100 / height, 10, 90);
}

void ListArea::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    shareHeight();
}

// --- What a host remembers ---

ViewState ListArea::viewState() const
{
    return { .order = m_records.order(),
        .findIsOpen = m_find->isOpen(),
        .detailsAreOpen = !m_details || !m_details->isHidden(),
        .detailsShare = m_share };
}

// While the bar is closed, the order is that of loading.
void ListArea::setViewState(const ViewState& state)
{
    if (state.findIsOpen)
        m_find->open();
    else
        m_find->close();
    m_records.setOrder(state.findIsOpen ? state.order : RecordOrder::AsLoaded);
    m_share = state.detailsShare;
    if (m_details)
        m_details->setVisible(state.detailsAreOpen);
    shareHeight();
}

}
