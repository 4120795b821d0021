#pragma once

#include "control/kalmevRepHistCtrl.h"
#include "qt/PanelView.h"
#include "qt/QtDesktop.h"
#include "tests/support/ScriptedHost.h"

#include <QTest>

#include <gtest/gtest.h>

namespace health::test {

// The panel on a scripted host, with real widgets.
class PanelFixture : public testing::Test {
protected:
    // Replies must have been given before.
    void showPanel(long patient, QSize size = { 900, 500 })
    {
        host.patient->patientNumber = patient;
        control.UserControl_Initialize();
        view = std::make_unique<PanelView>(control, desktop);
        view->resize(size);
        view->show();
        QTest::qWait(20);
    }

    ScriptedHost host;
    QtDesktop desktop;
    modShared shared { desktop };
    kalmevRepHistCtrl control { shared, host };
    std::unique_ptr<PanelView> view;
};

}
