#include "host/windows/SaveLine.h"

#include "host/session/HostSession.h"
#include "toolkit/Announcer.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTime>

using namespace Qt::StringLiterals;

namespace health {

SaveLine::SaveLine(HostSession& session)
    : m_undo(new QAction(u"&Undo Discarded Entry"_s, this))
    , m_text(new QLabel)
    , m_button(new QPushButton(u"Undo"_s))
{
    m_text->setTextFormat(Qt::PlainText);
    m_undo->setShortcut(QKeySequence(u"Ctrl+Z"_s));
    m_undo->setEnabled(false);
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
    connect(m_undo, &QAction::triggered, this, &SaveLine::entryWanted);
    connect(m_button, &QPushButton::clicked, m_undo, &QAction::trigger);
    connect(&session, &HostSession::recordSaved, this, &SaveLine::showSaved);
    connect(&session, &HostSession::entryDiscarded, this, &SaveLine::showOffer);
}

void SaveLine::showSaved(const QString& what)
{
    const QString saved = u"Saved %1"_s.arg(QTime::currentTime().toString(u"HH:mm"));
    const QString whole = saved + u" \u00B7 "_s + what;
    // An offer stays, next to its button.
    m_text->setText(m_offer.isEmpty() ? whole : saved + u".  "_s + m_offer);
    announce(*this, whole);
}

// An empty offer ends the former one.
void SaveLine::showOffer(const QString& offer)
{
    m_offer = offer;
    m_undo->setEnabled(!offer.isEmpty());
    m_button->setVisible(!offer.isEmpty());
    m_button->setAccessibleName(offer.isEmpty() ? QString() : u"Undo: %1"_s.arg(offer));
    m_text->setText(offer);
    if (!offer.isEmpty())
        announce(*this, m_text->text());
}

}
