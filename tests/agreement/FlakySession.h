// A session whose next call can fail, be refused, or take long.
#pragma once

#include "host/session/HostSession.h"

#include <QCoreApplication>
#include <QScopedValueRollback>
#include <QThread>

#include <utility>

namespace health::test {

class FlakySession : public Session {
public:
    explicit FlakySession(HostSession& session)
        : m_used(&session)
    {
    }
    // Switches to another session.
    void use(HostSession& session) { m_used = &session; }

    enum class Next {
        Answers,
        Fails,
        IsRefused,
        IsSlow,
    };
    static constexpr Next Flaws[] { Next::Fails, Next::IsRefused, Next::IsSlow, Next::IsSlow };
    Next next = Next::Answers;
    bool isInCall() const { return m_inCall || m_used->isInCall(); }
    std::function<void(TextView name, TextView parameter, const Text& reply)> afterCall;

    Text callText(TextView name, TextView parameter) override { return call(&Session::callText, name, parameter); }
    Text callList(TextView name, TextView parameter) override { return call(&Session::callList, name, parameter); }
    void abortRequest(long handle) override { m_used->abortRequest(handle); }
    void registerEvent(TextView name, ICSS_SessionEvents& sink) override { m_used->registerEvent(name, sink); }
    void unregisterEvent(TextView name, ICSS_SessionEvents& sink) override { m_used->unregisterEvent(name, sink); }
    void raiseEvent(TextView name, TextView data) override { m_used->raiseEvent(name, data); }
    std::optional<Text> value(TextView key) const override { return m_used->value(key); }
    void setValue(TextView key, TextView value) override { m_used->setValue(key, value); }
    bool isConnected() const override { return m_used->isConnected(); }
    void connect(TextView server) override { m_used->connect(server); }
    std::shared_ptr<HostObject> object(TextView progId) override { return m_used->object(progId); }

private:
    Text call(Text (Session::*operation)(TextView, TextView), TextView name, TextView parameter)
    {
        const Next now = std::exchange(next, Next::Answers);
        if (now == Next::Fails)
            throw Failure(L"The line is dead.");
        if (now == Next::IsRefused)
            return L"-1^Not today.";
        const QScopedValueRollback inCall(m_inCall, true);
        if (now == Next::IsSlow) { // paints the window, as any long call does
            QThread::msleep(5);
            QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        }
        const Text reply = (m_used->*operation)(name, parameter);
        afterCall(name, parameter, reply);
        return reply;
    }

    HostSession* m_used;
    bool m_inCall = false;
};

}
