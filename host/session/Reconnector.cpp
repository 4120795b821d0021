#include "host/session/Reconnector.h"

#include "api/Failure.h"

#include <algorithm>

namespace health {

namespace {

constexpr int LongestPause = 32; // in units of the first pause

}

Reconnector::Reconnector(int firstPauseMilliseconds)
    : m_firstPause(firstPauseMilliseconds)
    , m_nextPause(firstPauseMilliseconds)
{
    m_pause.setSingleShot(true);
    connect(&m_pause, &QTimer::timeout, this, &Reconnector::due);
}

bool Reconnector::attempt(const std::function<void()>& open)
{
    if (m_pause.isActive())
        return false;
    try {
        open();
    } catch (const Failure&) {
        m_pause.start(m_nextPause);
        m_nextPause = std::min(m_nextPause * 2, m_firstPause * LongestPause);
        return false;
    }
    m_pause.start(m_firstPause); // limits the attempts on a server that stops again and again
    return true;
}

void Reconnector::noteFailedCall()
{
    if (!m_pause.isActive())
        m_pause.start(m_nextPause);
}

void Reconnector::tryNow()
{
    m_pause.stop();
    Q_EMIT due();
}

void Reconnector::noteConnected()
{
    m_nextPause = m_firstPause;
    if (m_pause.remainingTime() > m_firstPause)
        m_pause.start(m_firstPause);
}

}
