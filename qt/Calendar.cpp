#include "qt/Calendar.h"

#include "qt/CalendarColours.h"
#include "qt/MonthView.h"
#include "text/DateWords.h"
#include "toolkit/Measures.h"
#include "toolkit/QtText.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QScreen>
#include <QToolButton>

#include <algorithm>

namespace health {

using namespace Qt::StringLiterals;

Calendar::Calendar(const DateRange& allowed, Moment day, Moment today, const QString& name, QWidget* parent)
    : QWidget(parent, Qt::Popup)
    , m_days(new MonthView(allowed, day, today, this))
    , m_title(new QLabel)
{
    setAttribute(Qt::WA_DeleteOnClose);
    setAttribute(Qt::WA_WindowPropagation); // the field's font and colours
    setAccessibleName(name);
    m_days->setAccessibleName(name);
    m_title->setFont(semibold(font()));
    m_title->setAlignment(Qt::AlignCenter);
    auto* const layout = new QVBoxLayout(this);
    const int margin = Measures(*this).units(2);
    layout->setContentsMargins(margin, margin, margin, margin);
    layout->setSpacing(Measures(*this).u());
    layout->setSizeConstraint(QLayout::SetFixedSize);
    layout->addWidget(makeHeading());
    layout->addWidget(m_days);
    if (const Text words = rangeWords(allowed, today); !words.empty()) {
        auto* const note = new QLabel(toQString(words));
        note->setFont(scaled(font(), TypeSize::Note));
        note->setForegroundRole(QPalette::PlaceholderText);
        layout->addWidget(note);
    }
    setFocusProxy(m_days);
    connect(m_days, &MonthView::monthChanged, this, &Calendar::showTitle);
    connect(m_days, &MonthView::picked, this, [this](Moment chosen) {
        close();
        Q_EMIT picked(chosen);
    });
    showTitle();
}

QWidget* Calendar::makeHeading()
{
    auto* const heading = new QWidget;
    auto* const layout = new QHBoxLayout(heading);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(makeArrow(u"\u00AB"_s, u"Previous year"_s, u"Ctrl+Page Up"_s, -12));
    layout->addWidget(makeArrow(u"\u2039"_s, u"Previous month"_s, u"Page Up"_s, -1));
    layout->addWidget(m_title, 1);
    layout->addWidget(makeArrow(u"\u203A"_s, u"Next month"_s, u"Page Down"_s, 1));
    layout->addWidget(makeArrow(u"\u00BB"_s, u"Next year"_s, u"Ctrl+Page Down"_s, 12));
    return heading;
}

QToolButton* Calendar::makeArrow(const QString& text, const QString& name, const QString& key, int months)
{
    auto* const arrow = new QToolButton;
    arrow->setText(text);
    arrow->setAccessibleName(name);
    arrow->setToolTip(u"%1 (%2)"_s.arg(name, key));
    arrow->setAutoRaise(true);
    arrow->setAutoRepeat(true);
    arrow->setFocusPolicy(Qt::NoFocus);
    const int side = Measures(*this).ems(1.5);
    arrow->setFixedSize(side, side);
    connect(arrow, &QToolButton::clicked, this, [this, months] { m_days->goByMonths(months); });
    return arrow;
}

void Calendar::showTitle()
{
    const std::chrono::year_month_day date { std::chrono::floor<std::chrono::days>(m_days->day()) };
    const TextView month = MonthNames[static_cast<unsigned>(date.month()) - 1];
    m_title->setText(u"%1 %2"_s.arg(toQString(month)).arg(static_cast<int>(date.year())));
}

void Calendar::openAt(const QWidget& widget)
{
    adjustSize();
    const QRect screen = widget.screen()->availableGeometry();
    const QPoint below = widget.mapToGlobal(QPoint(0, widget.height()));
    const int above = widget.mapToGlobal(QPoint()).y() - height();
    const int x = std::clamp(below.x(), screen.left(), std::max(screen.left(), screen.right() + 1 - width()));
    move(x, below.y() + height() <= screen.bottom() + 1 ? below.y() : std::max(above, screen.top()));
    show();
    m_days->setFocus(Qt::PopupFocusReason);
}

void Calendar::keyPressEvent(QKeyEvent* event)
{
    event->accept();
    if (event->key() == Qt::Key_Escape)
        close();
}

// The click that closes the calendar does not also press the field's button, which would open it again.
void Calendar::mousePressEvent(QMouseEvent* event)
{
    const QPoint place = parentWidget()->mapFromGlobal(event->globalPosition().toPoint());
    setAttribute(Qt::WA_NoMouseReplay, parentWidget()->rect().contains(place));
    QWidget::mousePressEvent(event);
}

void Calendar::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Base));
    const int pen = Measures(*this).hairline();
    const double inset = pen / 2.0;
    painter.setPen(QPen(CalendarColours(palette()).frame, pen));
    painter.drawRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset));
}

}
