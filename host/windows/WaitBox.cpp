#include "host/windows/WaitBox.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>
#include <QWindow>

using namespace Qt::StringLiterals;

namespace health {

namespace {

constexpr int TypedAhead = 500; // milliseconds; an earlier key was meant for another window

bool isInput(QEvent::Type type)
{
    switch (type) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::Shortcut:
    case QEvent::ShortcutOverride:
    case QEvent::InputMethod:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TabletPress:
    case QEvent::TabletMove:
    case QEvent::TabletRelease:
    case QEvent::DragEnter:
    case QEvent::Drop:
    case QEvent::Close:
        return true;
    default:
        return false;
    }
}

}

// The waiting window: with a modal dialog, only windows that belong to it take input. Null while the program starts.
QWidget* WaitBox::ownerFor(QWidget& mainWindow)
{
    if (QWidget* const modal = QApplication::activeModalWidget())
        return modal;
    return mainWindow.isVisible() ? &mainWindow : nullptr;
}

WaitBox::WaitBox(QWidget& mainWindow, QWidget* owner)
    : QFrame(owner, (owner ? Qt::Tool : Qt::Dialog) | Qt::CustomizeWindowHint | Qt::WindowTitleHint)
    , m_mainWindow(mainWindow)
    , m_text(new QLabel)
    , m_bar(new QProgressBar)
    , m_stop(new QPushButton)
{
    setAttribute(Qt::WA_ShowWithoutActivating, owner);
    m_text->setTextFormat(Qt::PlainText);
    m_text->setWordWrap(true);
    m_text->setMinimumWidth(fontMetrics().horizontalAdvance(u'x') * 44);
    m_bar->hide();
    auto* const line = new QHBoxLayout;
    line->addStretch();
    line->addWidget(m_stop);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(m_text);
    layout->addWidget(m_bar);
    layout->addLayout(line);
    connect(m_stop, &QPushButton::clicked, this, &WaitBox::stopped);
    // Ending a server may take two more seconds; meanwhile the disabled button shows that the press was accepted.
    connect(this, &WaitBox::stopped, m_stop, [this] {
        m_stop->setEnabled(false);
        m_stop->repaint();
    });
    QCoreApplication::instance()->installEventFilter(this);
}

WaitBox::~WaitBox() { QCoreApplication::instance()->removeEventFilter(this); }

void WaitBox::showProgress(int percent, const QString& text)
{
    setWindowTitle(u"Preparing the clinical data"_s);
    m_text->setText(text);
    m_bar->setValue(percent);
    m_bar->setAccessibleName(text);
    m_bar->show();
    m_stop->setText(u"Cancel (Esc)"_s);
    appear();
}

void WaitBox::showWaiting(bool saving, qint64 seconds)
{
    setWindowTitle(u"Personal Health"_s);
    m_text->setText(saving
            ? u"Saving has taken %1 seconds so far. Wait, or stop and keep what you have entered."_s.arg(seconds)
            : u"Still waiting for the server (%1 seconds) ..."_s.arg(seconds));
    m_stop->setText(saving ? u"Stop and keep the entries (Esc)"_s : u"Stop waiting (Esc)"_s);
    appear();
}

void WaitBox::appear()
{
    if (isVisible())
        return;
    setAccessibleName(windowTitle());
    // An open list or menu would receive the clicks.
    while (QWidget* const popup = QApplication::activePopupWidget()) {
        if (!popup->close())
            break;
    }
    adjustSize();
    const QWidget* const owner = parentWidget();
    const QRect place = owner ? owner->frameGeometry() : screen()->availableGeometry();
    move(place.center() - rect().center());
    show();
    // BusyCursor has an arrow, which shows that the button can be pressed.
    if (QGuiApplication::overrideCursor())
        QGuiApplication::changeOverrideCursor(Qt::BusyCursor);
    m_shown.start();
}

bool WaitBox::isOwn(const QObject* watched) const
{
    return watched == this || watched == windowHandle()
        || (watched->isWidgetType() && isAncestorOf(static_cast<const QWidget*>(watched)));
}

bool WaitBox::eventFilter(QObject* watched, QEvent* event)
{
    if (!isInput(event->type()) || !isVisible() || isOwn(watched))
        return false;
    if (event->type() == QEvent::Close)
        return watched != &m_mainWindow && watched != m_mainWindow.windowHandle();
    if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape
        && m_shown.hasExpired(TypedAhead))
        Q_EMIT stopped();
    return true;
}

void WaitBox::keyPressEvent(QKeyEvent* event)
{
    const int key = event->key();
    if (key != Qt::Key_Escape && key != Qt::Key_Return && key != Qt::Key_Enter)
        return QFrame::keyPressEvent(event);
    if (m_shown.hasExpired(TypedAhead))
        Q_EMIT stopped();
}

void WaitBox::closeEvent(QCloseEvent* event)
{
    event->ignore();
    Q_EMIT stopped();
}

}
