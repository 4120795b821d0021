#include "host/windows/StatusLine.h"

#include "host/session/HostSession.h"
#include "host/windows/SignLabel.h"
#include "toolkit/Announcer.h"
#include "toolkit/ControlStyle.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QTime>

using namespace Qt::StringLiterals;

namespace health {

StatusLine::StatusLine(HostSession& session)
    : m_undo(new QAction(u"&Undo Discarded Entry"_s, this))
    , m_text(new SignLabel)
    , m_button(new QPushButton(u"Undo"_s))
{
    m_undo->setShortcut(QKeySequence(u"Ctrl+Z"_s));
    m_undo->setEnabled(false);
    ControlStyle::giveTo(*m_button);
    m_button->setToolTip(u"Open the form again with the entry (Ctrl+Z)"_s);
    QSizePolicy kept = m_button->sizePolicy();
    kept.setRetainSizeWhenHidden(true); // the list must not move
    m_button->setSizePolicy(kept);
    m_button->hide();
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_text);
    layout->addWidget(m_button);
    layout->addStretch();
    m_text->setWordWrap(false);
    connect(m_undo, &QAction::triggered, this, &StatusLine::entryWanted);
    connect(m_button, &QPushButton::clicked, m_undo, &QAction::trigger);
    connect(&session, &HostSession::recordSaved, this, &StatusLine::showSaved);
    connect(&session, &HostSession::entryDiscarded, this, &StatusLine::showOffer);
    connect(&session, &HostSession::statusChanged, this, [this](const QString& status) {
        m_status = status;
        refresh();
    });
    connect(&session, &HostSession::connectionChanged, this, &StatusLine::showConnection);
}

void StatusLine::showSaved(const QString& what)
{
    const QString saved = u"Saved %1"_s.arg(QTime::currentTime().toString(u"HH:mm"));
    const QString whole = saved + u" \u00B7 "_s + what;
    // An offer stays, next to its button.
    m_saved = m_offer.isEmpty() ? whole : saved + u".  "_s + m_offer;
    refresh();
    announce(*this, whole);
}

void StatusLine::forgetSaved()
{
    m_saved.clear();
    refresh();
}

// Each failed try to reconnect signals the loss again. A status may stay for long, such as what was copied.
void StatusLine::showConnection(bool connected)
{
    const bool isNews = connected == !m_away.isEmpty();
    if (isNews)
        m_away = connected ? QString() : u"Not connected since %1"_s.arg(QTime::currentTime().toString(u"HH:mm"));
    if (!connected)
        m_status.clear();
    refresh();
    if (isNews && !connected)
        announce(*this, m_away);
}

// A status is what happens now, so it stands before what happened earlier.
void StatusLine::refresh()
{
    if (!m_status.isEmpty())
        m_text->say(m_status, Sign::None, Ink::Words);
    else if (!m_away.isEmpty())
        m_text->say(m_away, Sign::Disconnected, Ink::Caution, Ink::Words);
    else if (!m_saved.isEmpty())
        m_text->say(m_saved, Sign::Check, Ink::Good, Ink::Words);
    else
        m_text->say(m_offer, Sign::None, Ink::Words);
}

// An empty offer ends the former one.
void StatusLine::showOffer(const QString& offer)
{
    m_offer = offer;
    m_undo->setEnabled(!offer.isEmpty());
    m_button->setVisible(!offer.isEmpty());
    m_button->setAccessibleName(offer.isEmpty() ? QString() : u"Undo: %1"_s.arg(offer));
    m_saved.clear();
    refresh();
    if (!offer.isEmpty())
        announce(*this, offer);
}

}
