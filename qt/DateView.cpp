#include "qt/DateView.h"

#include "qt/QtDesktop.h"
#include "toolkit/QtText.h"

#include <QCalendarWidget>
#include <QCoreApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMenu>
#include <QTableView>
#include <QWidgetAction>

namespace health {

DateView::DateView(mevZvDate& date, QtDesktop& desktop)
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
    m_button->setToolTip(tr("Calendar"));
    m_button->setFocusPolicy(Qt::NoFocus); // Alt+Down in the field opens it too
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_line);
    layout->addWidget(m_button);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setFocusPolicy(Qt::StrongFocus); // or the label's key would pass it over
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
    m_line->setPlaceholderText(m_control.requiresTime() ? tr("mm/dd/yyyy hh:mm, N") : tr("mm/dd/yyyy, T, T-3"));
    m_line->setSample(m_line->placeholderText() + QStringLiteral("00"));
}

void DateView::setSpokenName(const QString& name)
{
    m_line->setAccessibleName(name);
    m_button->setAccessibleName(tr("%1 calendar").arg(name).trimmed());
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

// The day that the user picks; empty for none.
QString DateView::askCalendar()
{
    QMenu popup(this);
    auto* const calendar = new QCalendarWidget;
    calendar->setAccessibleName(m_button->accessibleName());
    if (auto* const days = calendar->findChild<QTableView*>())
        days->setAccessibleName(m_button->accessibleName());
    const std::pair<const char*, QString> arrows[] = { { "qt_calendar_prevmonth", tr("Previous month") },
        { "qt_calendar_nextmonth", tr("Next month") } };
    for (const auto& [object, name] : arrows) {
        if (auto* const arrow = calendar->findChild<QToolButton*>(QLatin1String(object)))
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
        picked = date.toString(QStringLiteral("MM/dd/yyyy"));
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
    // The time that is there stays; without one the user goes on with it.
    const QString time = m_control.requiresTime() ? m_line->text().section(u' ', 1) : QString();
    m_line->setText(m_control.requiresTime() ? picked + u' ' + time : picked);
    m_control.type(toText(m_line->text()));
    if (m_control.requiresTime() && time.isEmpty())
        return;
    if (m_control.settle())
        m_line->selectAll();
}

}
