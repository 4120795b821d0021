// The objects that the session hands out. They hold what the context sets; prompts go to the context.
#pragma once

#include "host/report/Report.h"
#include "host/session/HostSession.h"

#include <QDate>

namespace health {

// What the banner shows of a patient.
struct PatientData {
    long number = 0;
    QString name; // as stored
    QString sex;
    QString birthDate; // FileMan
    QDate birth; // the earliest that an inexact birth date can mean
};

struct VisitData {
    long number = 0;
    QString date; // FileMan
    QString location;
};

class HostPatient : public Patient {
public:
    PatientData data;
    std::function<void()> prompt;

    long number() const override { return data.number; }
    Text sex() const override { return data.sex.toStdWString(); }
    Text age() const override;
    bool isSelected() const override { return data.number != 0; }
    void select() override { prompt(); }
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
    explicit HostSite(HostSession& session)
        : m_session(session)
    {
    }
    long number() const override { return m_session.signedOn().siteNumber; }
    Text name() const override { return m_session.signedOn().siteName; }

private:
    HostSession& m_session;
};

class HostEncounter : public Encounter {
public:
    VisitData data;
    std::function<void()> choose; // offers the visit picker

    long visitNumber() const override { return data.number; }
    bool isValid() const override { return data.number != 0; }
    bool prepare(int flags) override;
    void prompt(int) override { choose(); }
};

class HostPrintPreview : public PrintPreview {
public:
    std::function<void(const Report& report)> show;

    void preview(TextView report, TextView title, TextView subtitle1, TextView subtitle2, TextView subtitle3,
        int lineWidth, bool pageNumbers, bool patientHeading) override;
};

}
