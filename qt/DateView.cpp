#include "qt/DateView.h"

#include "platform/Desktop.h"
#include "toolkit/QtText.h"

#include <QCalendarWidget>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMenu>
#include <QTableView>
#include <QWidgetAction>

namespace health {

using namespace Qt::StringLiterals;

DateView::DateView(mevZvDate& date, const Desktop& desktop)
    : Mirror(date)
    , m_desktop(desktop)
    , m_line(new EntryLine(toQString(date.shown())))
    , m_button(new QToolButton)
{
    mirrorOptions();
    m_line->setMaxLength(40);
    m_control.setClock([this] { return m_desktop.now(); });
    m_line->installEventFilter(this);
    connect(m_line, &QLineEdit::textEdited, this, [this](const QString& text) { m_control.type(toText(text)); });
    m_button->setArrowType(Qt::DownArrow);
    setSpokenName({});
    m_button->setToolTip(u"Calendar"_s);
    m_button->setFocusPolicy(Qt::NoFocus); // Alt+Down in the field opens the calendar too
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_line);
    layout->addWidget(m_button);
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
    m_line->setPlaceholderText(m_control.requiresTime() ? u"mm/dd/yyyy hh:mm, N"_s : u"mm/dd/yyyy, T, T-3"_s);
    m_line->setSample(m_line->placeholderText() + u"00"_s);
}

void DateView::setSpokenName(const QString& name)
{
    m_line->setAccessibleName(name);
    m_button->setAccessibleName(u"%1 calendar"_s.arg(name).trimmed());
}

bool DateView::eventFilter(QObject* watched, QEvent* event)
{
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
    const QString picked = askCalendar();
    if (!picked.isEmpty())
        pick(picked);
}

// Returns the day that the user picks as "mm/dd/yyyy", or an empty text.
QString DateView::askCalendar()
{
    QMenu popup(this);
    auto* const calendar = new QCalendarWidget;
    calendar->setAccessibleName(m_button->accessibleName());
    if (auto* const days = calendar->findChild<QTableView*>())
        days->setAccessibleName(m_button->accessibleName());
    const std::pair<QString, QString> arrows[] = { { u"qt_calendar_prevmonth"_s, u"Previous month"_s },
        { u"qt_calendar_nextmonth"_s, u"Next month"_s } };
    for (const auto& [object, name] : arrows) {
        if (auto* const arrow = calendar->findChild<QToolButton*>(object))
            arrow->setAccessibleName(name);
    }
    if (const auto moment = m_control.moment()) {
        const std::chrono::year_month_day date { std::chrono::floor<std::chrono::days>(*moment) };
        calendar->setSelectedDate(QDate(int(date.year()), int(unsigned(date.month())), int(unsigned(date.day()))));
    }
    auto* const action = new QWidgetAction(&popup);
    action->setDefaultWidget(calendar);
    popup.addAction(action);
    QString picked;
    const auto close = [&](const QDate& date) {
        picked = date.toString(u"MM/dd/yyyy"_s);
        popup.close();
    };
    connect(calendar, &QCalendarWidget::activated, &popup, close);
    connect(calendar, &QCalendarWidget::clicked, &popup, close);
    calendar->setFocus();
    popup.exec(m_line->mapToGlobal(QPoint(0, m_line->height())));
    return picked;
}

void DateView::pick(const QString& picked)
{
    m_line->setFocus();
    if (window()->focusWidget() != m_line)
        return; // the field before kept the focus
    // Keeps the time of day; if it is missing, the user types it next.
    const QString time = m_control.requiresTime() ? m_line->text().section(u' ', 1) : QString();
    m_line->setText(m_control.requiresTime() ? picked + u' ' + time : picked);
    m_control.type(toText(m_line->text()));
    if (m_control.requiresTime() && time.isEmpty())
        return;
    if (m_control.settle())
        m_line->selectAll();
}

}
