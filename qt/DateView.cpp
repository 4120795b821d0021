#include "qt/DateView.h"

#include "platform/Desktop.h"
#include "qt/Calendar.h"
#include "toolkit/QtText.h"

#include <QAction>
#include <QHBoxLayout>
#include <QKeyEvent>

#include <algorithm>

namespace health {

using namespace Qt::StringLiterals;

DateView::DateView(mevZvDate& date, const Desktop& desktop)
    : Mirror(date)
    , m_desktop(desktop)
    , m_line(new EntryLine(toQString(date.shown())))
    , m_button(new CalendarButton(m_line))
{
    mirrorOptions();
    m_line->setMaxLength(40);
    m_control.setClock([this] { return m_desktop.now(); });
    m_line->installEventFilter(this);
    connect(m_line, &QLineEdit::textEdited, this, [this](const QString& text) { m_control.type(toText(text)); });
    setSpokenName({});
    m_button->setToolTip(u"Calendar"_s);
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_line);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setFocusPolicy(Qt::StrongFocus); // else the label's access key would skip it
    setFocusProxy(m_line);
    connect(m_button, &QToolButton::clicked, this, &DateView::openCalendar);
    auto* const key = new QAction(this);
    key->setShortcut(QKeySequence(Qt::ALT | Qt::Key_Down));
    key->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    addAction(key);
    connect(key, &QAction::triggered, this, &DateView::openCalendar);
}

void DateView::mirror(Change change)
{
    if (change == Change::Entry)
        m_line->setText(toQString(m_control.shown()));
    else if (change == Change::Options)
        mirrorOptions();
}

void DateView::mirrorOptions()
{
    const bool timed = m_control.requiresTime();
    m_line->setPlaceholderText(timed ? u"mm/dd/yyyy hh:mm"_s : u"mm/dd/yyyy"_s);
    placeButton();
}

// Keeps the symbol at the end of the line, which is as wide as the longest date.
void DateView::placeButton()
{
    const QFontMetrics metrics = m_line->fontMetrics();
    const QString placeholder = m_line->placeholderText();
    const QString digits(placeholder.size(), u'0');
    const bool isWider = metrics.horizontalAdvance(placeholder) > metrics.horizontalAdvance(digits);
    m_line->setTextMargins(0, 0, m_button->sizeHint().width(), 0);
    m_line->setSample(isWider ? placeholder : digits);
    m_button->resize(m_button->sizeHint().width(), m_line->height());
    m_button->move(m_line->width() - m_button->width(), 0);
}

void DateView::setSpokenName(const QString& name)
{
    m_line->setAccessibleName(name);
    m_button->setAccessibleName(u"%1 calendar"_s.arg(name).trimmed());
}

bool DateView::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize || event->type() == QEvent::FontChange)
        placeButton();
    if (event->type() == QEvent::KeyPress) {
        const int pressed = static_cast<QKeyEvent*>(event)->key();
        wchar_t key = EnterKey;
        if (pressed == Qt::Key_Return || pressed == Qt::Key_Enter) {
            m_control.pressKey(key);
            if (key == 0)
                return true;
        }
    }
    return Mirror::eventFilter(watched, event);
}

void DateView::openCalendar()
{
    if (!m_control.canBeUsed())
        return;
    const Moment now = m_desktop.now();
    const DateRange allowed = m_control.allowed(now);
    const Moment start = momentEntered(m_control.shown(), now, allowed).value_or(now);
    auto* const calendar = new Calendar(allowed, start, now, m_button->accessibleName(), this);
    connect(calendar, &Calendar::picked, this, &DateView::pick);
    calendar->openAt(*m_line);
}

void DateView::pick(Moment day)
{
    m_line->setFocus();
    if (window()->focusWidget() != m_line)
        return; // the field before kept the focus
    // Keeps the time of day; if it is missing, the user types it next.
    const QString picked = toQString(dateText(day));
    const QString time = m_control.requiresTime() ? m_line->text().section(u' ', 1) : QString();
    m_line->setText(m_control.requiresTime() ? picked + u' ' + time : picked);
    m_control.type(toText(m_line->text()));
    if (m_control.requiresTime() && time.isEmpty())
        return;
    if (m_control.settle())
        m_line->selectAll();
}

}
