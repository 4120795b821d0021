#include "host/windows/CallWatch.h"

#include "host/session/HostSession.h"
#include "host/windows/WaitBox.h"

#include <QApplication>
#include <QGridLayout>
#include <QMessageBox>
#include <QScopeGuard>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace health {

namespace {
// In milliseconds
constexpr int Patience = 2000; // before the window offers to stop waiting
constexpr int SavePatience = 5000; // the same for a save, whose form shows earlier that it works
}

CallWatch::CallWatch(HostSession& session, QWidget& window, Audience audience)
    : QObject(&window)
    , m_session(session)
    , m_window(window)
    , m_audience(audience)
{
    connect(&session, &HostSession::progressed, this, &CallWatch::showProgress);
    connect(&session, &HostSession::callEnded, this, &CallWatch::endWaiting);
    session.onWait = [this](qint64 milliseconds) { return showWaiting(milliseconds); };
}

bool CallWatch::asksToRetry(const QString& reason)
{
    endWaiting();
    if (m_audience == Audience::Nobody) {
        std::fprintf(stderr, "%s\n", qPrintable(reason));
        return false;
    }
    QMessageBox box(QMessageBox::Warning, u"Personal Health"_s, u"The connection to the server failed. Try again?"_s,
        QMessageBox::Retry | QMessageBox::Cancel, QApplication::activeWindow());
    box.setInformativeText(reason);
    box.setTextFormat(Qt::PlainText);
    box.setTextInteractionFlags(Qt::TextSelectableByMouse);
    box.setDefaultButton(QMessageBox::Retry);
    // Otherwise the box is as wide as its first sentence, and wraps the paths in the reason.
    if (auto* const grid = qobject_cast<QGridLayout*>(box.layout()))
        grid->addItem(new QSpacerItem(m_window.fontMetrics().horizontalAdvance(u'x') * 70, 0), grid->rowCount(), 0, 1,
            grid->columnCount());
    QApplication::setOverrideCursor(
        Qt::ArrowCursor); // the call has set the busy pointer, but the box waits for the user
    const auto callGoesOn = qScopeGuard([] { QApplication::restoreOverrideCursor(); });
    return box.exec() == QMessageBox::Retry;
}

void CallWatch::endWaiting() { delete m_box; }

void CallWatch::showProgress(int percent, const QString& text)
{
    if (m_audience == Audience::Nobody)
        return printProgress(u"%1 (%2%)"_s.arg(text).arg(percent / 25 * 25));
    waitBox().showProgress(percent, text);
}

void CallWatch::printProgress(const QString& line)
{
    if (line != m_printed)
        std::fprintf(stderr, "%s\n", qPrintable(line));
    m_printed = line;
}

// Offers to stop a long call; true while the box that offers it is shown and takes all input.
bool CallWatch::showWaiting(qint64 milliseconds)
{
    if (m_audience == Audience::Nobody)
        return false;
    const bool saving = m_session.isSaving();
    if (milliseconds >= (saving ? SavePatience : Patience))
        waitBox().showWaiting(saving, milliseconds / 1000);
    return m_box;
}

WaitBox& CallWatch::waitBox()
{
    if (!m_box) {
        m_box = new WaitBox(m_window);
        connect(m_box, &WaitBox::stopped, &m_session, &HostSession::giveUp);
    }
    return *m_box;
}

}
