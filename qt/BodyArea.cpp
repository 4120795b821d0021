#include "qt/BodyArea.h"

#include "toolkit/Measures.h"

#include <QLayout>
#include <QScrollBar>

#include <algorithm>

namespace health {

BodyArea::BodyArea(QLayout* fields)
    : m_body(new QWidget)
{
    m_body->setLayout(fields);
    const Measures measures(*this);
    fields->setContentsMargins(
        measures.formMargin(), measures.formMargin(), measures.formMargin(), measures.formMargin());
    setWidget(m_body);
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
}

// Bars as needed would let one bar, shown for a moment while the window grows, take the room that makes the other one
// necessary.
void BodyArea::placeBars()
{
    const int margin = Measures(*this).formMargin();
    const auto setMargin = [&](int right) {
        QMargins margins = m_body->layout()->contentsMargins();
        margins.setRight(right);
        m_body->layout()->setContentsMargins(margins);
    };
    setMargin(margin);
    const bool isLow = heightFor(width()) > height();
    if (isLow)
        setMargin(std::max(0, margin - verticalScrollBar()->sizeHint().width()));
    const bool isNarrow = leastWidth() > width();
    setVerticalScrollBarPolicy(isLow ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff);
    setHorizontalScrollBarPolicy(isNarrow ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff);
}

void BodyArea::resizeEvent(QResizeEvent* event)
{
    QScrollArea::resizeEvent(event);
    placeBars();
}

int BodyArea::heightFor(int width) const
{
    const QLayout* const layout = m_body->layout();
    const int bar = leastWidth() > width ? horizontalScrollBar()->sizeHint().height() : 0;
    return bar + (layout->hasHeightForWidth() ? layout->totalHeightForWidth(width) : layout->totalSizeHint().height());
}

void BodyArea::show(QWidget& widget, const QWidget* below)
{
    const auto place = [this](const QWidget& part) { return QRect(part.mapTo(m_body, QPoint()), part.size()); };
    const int margin = Measures(*this).rowGap();
    if (below && below->isVisible()) {
        const QRect whole = place(widget) | place(*below);
        ensureVisible(whole.left(), whole.bottom(), margin, margin);
    }
    ensureWidgetVisible(&widget, margin, margin);
}

// The bar's share of the margin.
int BodyArea::barWidth() const { return Measures(*this).formMargin() - m_body->layout()->contentsMargins().right(); }

QSize BodyArea::sizeHint() const { return m_body->layout()->totalSizeHint() + QSize(barWidth(), 0); }

int BodyArea::leastWidth() const { return m_body->layout()->totalMinimumSize().width() + barWidth(); }

// A screen may be narrower than the fields.
QSize BodyArea::minimumSizeHint() const { return { Measures(*this).ems(12), Measures(*this).ems(4) }; }

}
