#include "qt/ControlViews.h"

#include "qt/PanelIcon.h"
#include "toolkit/Announcer.h"
#include "toolkit/ControlPainting.h"
#include "toolkit/ControlStyle.h"
#include "toolkit/Measures.h"
#include "toolkit/QtText.h"

#include <QEvent>
#include <QShortcut>
#include <QTimer>

#include <algorithm>
#include <utility>

namespace health {

using namespace Qt::StringLiterals;

ButtonView::ButtonView(Button& button, QWidget* parent)
    : Mirror(button, toQString(button.caption()), parent)
    , m_busy(new BusyMark(*this))
{
    ControlStyle::giveTo(*this);
    setAutoDefault(false);
    setFocusPolicy(Qt::TabFocus); // the press, not the click, moves the focus
    connect(this, &QPushButton::clicked, this, [this] {
        if (m_press)
            m_press();
        else
            m_control.click();
    });
}

void ButtonView::mirror(Change change)
{
    if (change == Change::Caption) {
        setText(toQString(m_control.caption()));
        setAccessKeyUsed(m_accessKeyUsed);
    }
    if (change == Change::Busy)
        m_busy->setRunning(m_control.isBusy());
    if (change == Change::Enabled && m_refuge)
        keepFocusNear();
    if (change == Change::Refusal)
        mirrorRefusal();
}

// Qt's disabled buttons swallow clicks.
bool ButtonView::event(QEvent* event)
{
    if (event->type() == QEvent::MouseButtonPress && !isEnabled())
        m_control.click(); // says why it cannot run
    return Mirror::event(event);
}

void ButtonView::mirrorRefusal()
{
    setToolTip(toToolTip(m_control.refusal()));
    setAccessibleDescription(toLines(m_control.refusal()));
    if (!m_refusedKey && !m_control.refusal().empty()) {
        m_refusedKey = new QShortcut(parentWidget());
        connect(m_refusedKey, &QShortcut::activated, this, [this] {
            m_control.click();
            announce(*this, toLines(m_control.refusal()));
        });
    }
    setAccessKeyUsed(m_accessKeyUsed);
}

void ButtonView::setFilled(bool filled)
{
    setProperty(FilledProperty, filled);
    update();
}

// The mark stands left of the caption, which keeps its place.
void ButtonView::paintEvent(QPaintEvent* event)
{
    Mirror::paintEvent(event);
    const Measures measures(*this);
    const int side = measures.ems(0.5);
    const int room = (width() - fontMetrics().size(Qt::TextShowMnemonic, text()).width()) / 2;
    const int gap = std::min(measures.units(1.5), (room - side) / 2);
    const QRect place(room - gap - side, contentsRect().center().y() - side / 2, side, side);
    QPainter painter(this);
    const Look look { .enabled = isEnabled(), .filled = property(FilledProperty).toBool() };
    m_busy->paint(painter, place, buttonInk(palette(), look));
}

void ButtonView::setAccessKeyUsed(bool used)
{
    m_accessKeyUsed = used;
    const QKeySequence key = used ? QKeySequence::mnemonic(text()) : QKeySequence();
    setShortcut(key);
    if (m_refusedKey)
        m_refusedKey->setKey(m_control.refusal().empty() ? QKeySequence() : key);
}

// A reload disables and re-enables the buttons; park the focus on the grid meanwhile.
void ButtonView::keepFocusNear()
{
    const QWidget* const focused = window()->focusWidget();
    if (!m_control.isEnabled() && focused == this) {
        m_refuge->setFocus(Qt::OtherFocusReason);
        m_comesBack = true;
        QTimer::singleShot(0, this, [this] { m_comesBack = false; });
    } else if (m_control.isEnabled() && std::exchange(m_comesBack, false) && focused == m_refuge) {
        setEnabled(true);
        setFocus(Qt::OtherFocusReason);
    }
}

ImageView::ImageView(Image& image, QWidget* parent)
    : Mirror(image, parent)
{
    setAccessibleName(u"Personal Health"_s);
    setAccessibleDescription(toLines(image.toolTip()));
    draw();
}

void ImageView::mirror(Change change)
{
    if (change == Change::ToolTip)
        setAccessibleDescription(toLines(m_control.toolTip()));
}

void ImageView::draw()
{
    const int side = fontMetrics().height() * 5 / 4;
    setPixmap(panelIcon(side, devicePixelRatioF()));
}

void ImageView::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::FontChange)
        draw();
    QLabel::changeEvent(event);
}

}
