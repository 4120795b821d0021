#include "qt/DetailsTable.h"

#include "toolkit/Inks.h"
#include "toolkit/Measures.h"

#include <QApplication>
#include <QEvent>
#include <QStyle>
#include <QStyledItemDelegate>
#include <QTableView>

namespace health {

namespace {

// Captions end at the axis, quieter than the values.
class CaptionDelegate : public QStyledItemDelegate {
public:
    CaptionDelegate(QObject* owner, int gap)
        : QStyledItemDelegate(owner)
        , m_gap(gap)
    {
    }

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        option->displayAlignment = Qt::AlignRight | Qt::AlignTop;
        option->palette.setColor(QPalette::Text, colourOf(Ink::Quiet, option->palette));
        option->rect.adjust(0, 0, -m_gap, 0);
    }

private:
    int m_gap;
};

// Gives a table the window's ground, also after the desktop's colours have changed.
class WindowGround : public QObject {
public:
    explicit WindowGround(QTableView& table)
        : QObject(&table)
        , m_table(table)
    {
        table.installEventFilter(this);
        apply();
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::ApplicationPaletteChange)
            apply();
        return QObject::eventFilter(watched, event);
    }

private:
    void apply()
    {
        QPalette ground; // all other roles stay those of the application
        for (const QPalette::ColorRole role : { QPalette::Base, QPalette::AlternateBase })
            ground.setColor(role, QApplication::palette(&m_table).color(QPalette::Window));
        m_table.setPalette(ground);
    }

    QTableView& m_table;
};

}

int makeDetails(QTableView& table, const Measures& measures)
{
    constexpr double shownRows = 6.5; // in ems; more of them scroll
    const int cellMargin = table.style()->pixelMetric(QStyle::PM_FocusFrameHMargin) + 1;
    table.setFrameShape(QFrame::NoFrame);
    table.setShowGrid(false);
    table.setAlternatingRowColors(false);
    table.setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    new WindowGround(table);
    table.setFixedHeight(measures.ems(shownRows * 1.2));
    const int gap = measures.captionGap() - cellMargin;
    table.setItemDelegateForColumn(0, new CaptionDelegate(&table, gap - cellMargin));
    return gap;
}

}
