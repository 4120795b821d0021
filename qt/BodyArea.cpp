#include "qt/BodyArea.h"

#include "qt/Measures.h"

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
    connect(verticalScrollBar(), &QScrollBar::rangeChanged, this, &BodyArea::placeBar);
}

void BodyArea::placeBar()
{
    const int margin = Measures(*this).formMargin();
    const int bar = verticalScrollBar()->maximum() > 0 ? verticalScrollBar()->sizeHint().width() : 0;
    QMargins margins = m_body->layout()->contentsMargins();
    margins.setRight(std::max(0, margin - bar));
    m_body->layout()->setContentsMargins(margins);
}

int BodyArea::heightFor(int width) const
{
    const QLayout* const layout = m_body->layout();
    return layout->hasHeightForWidth() ? layout->totalHeightForWidth(width) : layout->totalSizeHint().height();
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

QSize BodyArea::sizeHint() const { return m_body->layout()->totalSizeHint(); }

QSize BodyArea::minimumSizeHint() const
{
    return { m_body->layout()->totalMinimumSize().width(), Measures(*this).ems(4) };
}

}
