#include "qt/AwayStrip.h"

#include "qt/RunFlow.h"
#include "toolkit/Announcer.h"
#include "toolkit/ControlStyle.h"
#include "toolkit/Inks.h"
#include "toolkit/Measures.h"

#include <QEvent>
#include <QPainter>
#include <QPushButton>

#include <algorithm>

namespace health {

using namespace Qt::StringLiterals;

namespace {

constexpr double SymbolWidth = 0.95; // em
const QString Title = u"The server is not connected."_s;

// Two plugs that do not touch.
void drawApart(QPainter& painter, const QRectF& place, const QColor& colour)
{
    const double side = place.width();
    painter.setPen(QPen(colour, side / 9, Qt::SolidLine, Qt::FlatCap));
    const double middle = place.center().y();
    for (const double sign : { -1.0, 1.0 }) {
        const double inner = place.center().x() + sign * side * 0.16;
        painter.drawLine(QPointF(inner, middle - side * 0.3), QPointF(inner, middle + side * 0.3));
        painter.drawLine(QPointF(inner, middle), QPointF(place.center().x() + sign * side * 0.5, middle));
    }
}

}

AwayStrip::AwayStrip()
    : m_button(new QPushButton(u"&Try Now"_s, this))
{
    ControlStyle::giveTo(*m_button);
    m_button->setAutoDefault(false);
    m_second.setInterval(1000);
    connect(m_button, &QPushButton::clicked, this, &AwayStrip::tryNow);
    connect(&m_second, &QTimer::timeout, this, &AwayStrip::countDown);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    setAccessibleName(Title);
    hide();
}

void AwayStrip::show(int seconds, QTime loaded)
{
    m_seconds = seconds;
    m_second.start();
    m_button->setEnabled(seconds > 0);
    setLoaded(loaded);
    if (!isVisibleTo(parentWidget())) {
        announce(*this, Title + u' ' + state());
        setVisible(true);
    }
}

void AwayStrip::setLoaded(QTime loaded)
{
    m_loaded = loaded;
    setAccessibleDescription(state());
    updateGeometry();
    update();
}

void AwayStrip::countDown()
{
    if (!isVisible())
        m_second.stop();
    m_seconds = std::max(0, m_seconds - 1);
    update();
}

QString AwayStrip::state() const
{
    const QString age =
        m_loaded.isValid() ? u"These are the records as of %1. "_s.arg(m_loaded.toString(u"HH:mm"_s)) : QString();
    return age + u"Nothing can be saved until it answers."_s;
}

QString AwayStrip::pause() const
{
    return m_seconds > 0 ? u"Trying again in %1 s"_s.arg(m_seconds) : u"Trying again now"_s;
}

RunFlow AwayStrip::content() const
{
    const QColor plain = colourOf(Ink::Words, palette());
    RunFlow flow;
    flow.add({ { { Title + u"  "_s, semibold(font()), plain } } });
    for (const QString& sentence : state().split(u". "_s))
        flow.add({ { { sentence.endsWith(u'.') ? sentence + u"  "_s : sentence + u". "_s, font(), plain } } });
    flow.add({ { { pause(), font(), colourOf(Ink::Quiet, palette()) } } });
    return flow;
}

int AwayStrip::textLeft() const { return Measures(*this).units(3) + Measures(*this).ems(SymbolWidth); }

int AwayStrip::textWidth(int width) const
{
    const Measures measures(*this);
    return width - textLeft() - m_button->sizeHint().width() - measures.units(2) - measures.captionGap();
}

int AwayStrip::heightForWidth(int width) const
{
    const Measures measures(*this);
    const int text = content().heightFor(textWidth(width), measures.em());
    return std::max(text, measures.fieldHeight()) + 2 * measures.units(1.5);
}

QSize AwayStrip::sizeHint() const
{
    return { textLeft() + content().naturalWidth() + m_button->sizeHint().width(), heightForWidth(width()) };
}

void AwayStrip::paintEvent(QPaintEvent*)
{
    const Measures measures(*this);
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Base));
    painter.fillRect(rect(), colourOf(Ink::Severity1, palette()));
    const RunFlow flow = content();
    const int width = textWidth(this->width());
    const int top = (height() - flow.heightFor(width, measures.em())) / 2;
    flow.draw(painter, { textLeft(), top }, width, measures.em());
    painter.setRenderHint(QPainter::Antialiasing);
    const double side = measures.ems(SymbolWidth);
    drawApart(painter, QRectF(measures.units(2), top + (measures.em() - side) / 2, side, side),
        colourOf(Ink::Caution, palette()));
}

void AwayStrip::placeButton()
{
    const QSize size = m_button->sizeHint();
    const int right = width() - Measures(*this).units(2);
    m_button->setGeometry(right - size.width(), (height() - size.height()) / 2, size.width(), size.height());
}

void AwayStrip::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    placeButton();
}

void AwayStrip::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() != QEvent::FontChange)
        return;
    updateGeometry();
    placeButton();
}

}
