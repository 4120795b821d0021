// The panel's logic on a session with the real server; the other host objects are scripted.
#pragma once

#include "tests/support/RealServer.h"
#include "tests/support/ScriptedHost.h"

#include <QDateTime>

namespace health::test {

struct RealPanel : Host {
    RealPanel(HostSession& session, long patient, TextView sex, TextView age)
    {
        objects.given = std::shared_ptr<Session>(&session, [](Session*) {});
        objects.patient->patientNumber = patient;
        objects.patient->patientSex = sex;
        objects.patient->patientAge = age;
        const QDate today = QDate::currentDate();
        objects.desktop.today = momentOf(today.year(), today.month(), today.day(), 9, 30);
        for (const auto& [progId, object] : objects.session->objects)
            session.setObject(progId, object);
    }

    std::unique_ptr<HostManager> createManager() override { return objects.createManager(); }

    ScriptedHost objects;
    modShared shared { objects.desktop };
};

}
