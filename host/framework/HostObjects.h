// The objects that the session hands out. They hold what the context sets.
#pragma once

#include "host/framework/Selection.h"
#include "host/report/Report.h"
#include "host/session/HostSession.h"

#include <chrono>
#include <functional>
#include <optional>

class QTimeZone;

namespace health {

// The offset from UTC, in seconds, of a local time in a zone. Empty if it is not certain.
std::optional<int> certainOffset(std::chrono::local_seconds time, const QTimeZone& zone);

class HostPatient : public Patient {
public:
    // `prompt` offers the patient picker.
    explicit HostPatient(std::function<void()> prompt)
        : m_prompt(std::move(prompt))
    {
    }

    PatientData data;

    long number() const override { return data.number; }
    Text sex() const override { return data.sex.toStdWString(); }
    Text age() const override;
    Text displayName() const override;
    Text displayAge() const override;
    Text birthDate() const override;
    bool isSelected() const override { return data.number != 0; }
    void select() override { m_prompt(); }

private:
    std::function<void()> m_prompt;
};

class HostUser : public User {
public:
    explicit HostUser(HostSession& session)
        : m_session(session)
    {
    }
    long number() const override { return m_session.signedOn().userNumber; }
    Text name() const override { return m_session.signedOn().userName; }
    Text hasKeys(TextView keyNames) const override { return m_session.callText(L"MEVHOST KEYS", keyNames); }

private:
    HostSession& m_session;
};

class HostSite : public Site {
public:
    // `hasLocalClock`: the server has the clock of this machine.
    HostSite(HostSession& session, bool hasLocalClock)
        : m_session(session)
        , m_hasLocalClock(hasLocalClock)
    {
    }
    long number() const override { return m_session.signedOn().siteNumber; }
    Text name() const override { return m_session.signedOn().siteName; }
    Text zoneOffset(std::chrono::local_seconds time) const override;

private:
    HostSession& m_session;
    bool m_hasLocalClock;
};

class HostEncounter : public Encounter {
public:
    // `choose` offers the visit picker.
    explicit HostEncounter(std::function<void()> choose)
        : m_choose(std::move(choose))
    {
    }

    VisitData data;

    long visitNumber() const override { return data.number; }
    Text displayText() const override;
    bool isValid() const override { return data.number != 0; }
    bool prepare(int flags) override;
    void prompt(int) override { m_choose(); }

private:
    std::function<void()> m_choose;
};

class HostPrintPreview : public PrintPreview {
public:
    HostPrintPreview(std::function<void(const Report& report)> show, std::function<void(Printout& pages)> showPages)
        : m_show(std::move(show))
        , m_showPages(std::move(showPages))
    {
    }

    void preview(TextView report, TextView title, TextView subtitle1, TextView subtitle2, TextView subtitle3,
        int lineWidth, bool pageNumbers, bool patientHeading) override;
    bool previewPages(Printout& pages) override;

private:
    std::function<void(const Report& report)> m_show;
    std::function<void(Printout& pages)> m_showPages;
};

}
