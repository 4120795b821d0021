#include "host/windows/SupportMenu.h"

#include "host/session/DisturbedTransport.h"
#include "host/session/HostSession.h"
#include "host/windows/CallJournalWindow.h"
#include "host/windows/LaboratoryWindow.h"
#include "host/windows/SignLabel.h"

#include <QMainWindow>
#include <QMenu>
#include <QStatusBar>

using namespace Qt::StringLiterals;

namespace health {

namespace {

void bringUp(QDialog& dialog)
{
    dialog.setAttribute(Qt::WA_DeleteOnClose);
    dialog.show();
    dialog.raise();
    dialog.activateWindow();
}

}

SupportMenu::SupportMenu(QMenu& help, HostSession& session, DisturbedTransport* laboratory, QMainWindow& window)
    : QObject(&window)
    , m_session(session)
    , m_window(window)
{
    help.addAction(u"&Call Journal..."_s, this, &SupportMenu::showJournal);
    if (laboratory)
        addLaboratory(help, *laboratory);
}

void SupportMenu::addLaboratory(QMenu& help, DisturbedTransport& transport)
{
    help.addAction(u"&Laboratory..."_s, this, [this, &transport] {
        if (!m_laboratory)
            m_laboratory = new LaboratoryWindow(transport, &m_window);
        bringUp(*m_laboratory);
    });
    auto* const state = new SignLabel;
    const auto follow = [state, &transport] {
        const bool isNormal = transport.disturbances() == Disturbances();
        state->say(u"Laboratory: %1"_s.arg(describe(transport.disturbances())), isNormal ? Sign::None : Sign::Caution,
            Ink::Caution, Ink::Words);
    };
    connect(&transport, &DisturbedTransport::disturbed, state, follow);
    follow();
    m_window.statusBar()->addPermanentWidget(state);
}

void SupportMenu::showJournal()
{
    if (!m_journal)
        m_journal = new CallJournalWindow(m_session.journal(), &m_window);
    bringUp(*m_journal);
}

}
