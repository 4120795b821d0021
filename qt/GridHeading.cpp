#include "qt/GridHeading.h"

#include "toolkit/Inks.h"
#include "toolkit/Measures.h"

#include <QPaintEvent>
#include <QPainter>

namespace health {

GridHeading::GridHeading(QWidget* parent)
    : QHeaderView(Qt::Horizontal, parent)
{
    setHighlightSections(false);
}

QSize GridHeading::sizeHint() const { return { QHeaderView::sizeHint().width(), Measures(*this).fieldHeight() }; }

void GridHeading::paintEvent(QPaintEvent* event)
{
    const Measures measures(*this);
    QPainter painter(viewport());
    painter.fillRect(event->rect(), palette().color(QPalette::Base));
    painter.setPen(colourOf(Ink::Quiet, palette()));
    const int margin = style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, this) + 1; // that of the cells
    for (int section = 0; section < count(); ++section) {
        const QRect place(sectionViewportPosition(section) + margin, 0, sectionSize(section) - 2 * margin, height());
        const QString text = model()->headerData(section, Qt::Horizontal).toString();
        if (!isSectionHidden(section) && place.intersects(event->rect()))
            painter.drawText(
                place, Qt::AlignVCenter | Qt::AlignLeft, fontMetrics().elidedText(text, Qt::ElideRight, place.width()));
    }
    painter.fillRect(
        0, height() - measures.hairline(), width(), measures.hairline(), colourOf(Ink::Hairline, palette()));
}

}
