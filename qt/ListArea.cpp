#include "qt/ListArea.h"

#include "qt/RecordListView.h"

#include <QSplitter>
#include <QVBoxLayout>

namespace health {

ListArea::ListArea(ShownRecords& records, ViewDesktop& desktop, QWidget* parent)
    : QWidget(parent)
    , m_column(new QVBoxLayout(this))
    , m_splitter(new QSplitter(Qt::Vertical))
    , m_list(new RecordListView(records, desktop, *this))
{
    m_column->setContentsMargins(0, 0, 0, 0);
    m_column->setSpacing(0);
    m_column->addWidget(m_splitter, 1);
    m_splitter->setChildrenCollapsible(false);
    m_splitter->addWidget(m_list);
}

void ListArea::setDetails(QWidget& details)
{
    m_splitter->addWidget(&details);
    m_splitter->setStretchFactor(0, 1);
    m_splitter->setStretchFactor(1, 0);
}

}
