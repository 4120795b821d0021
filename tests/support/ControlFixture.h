#pragma once

#include "control/GridColumns.h"
#include "control/kalmevRepHistCtrl.h"
#include "tests/support/Replies.h"
#include "tests/support/ScriptedHost.h"

#include <gtest/gtest.h>

namespace health::test {

// One panel on a scripted host.
class ControlFixture : public testing::Test {
protected:
    // Starts and shows the panel with a patient (0: none) and forgets the calls of the start.
    void open(long patientNumber, TextView sex = L"F", TextView age = L"30")
    {
        setPatient(patientNumber, sex, age);
        control.UserControl_Initialize();
        control.UserControl_Show();
    }

    void reply(TextView call, TextView text) { host.session->reply(call, text); }
    void push(TextView event, TextView data = {}) { host.session->push(event, data); }

    // A child with a record of each type that can be listed; the rows are in the order 1, 3, 2, 4, 5, 6, 7.
    void openChild()
    {
        reply(L"MEVREP GET", L"G0");
        reply(L"MEVBMSR GET", L"7");
        for (const TextView call : { L"MEVVIF GET", L"MEVVELD GET", L"MEVVAST GET", L"MEVVTXC GET", L"MEVREF GET" })
            reply(call, L"5^^3260310|81^X\r\n");
        open(12, L"F", L"4");
        host.transcript.clear();
    }

    void setPatient(long number, TextView sex = L"F", TextView age = L"30")
    {
        host.patient->patientNumber = number;
        host.patient->patientSex = sex;
        host.patient->patientAge = age;
    }

    void commitPatient(long number, TextView sex = L"F", TextView age = L"30")
    {
        setPatient(number, sex, age);
        control.patientEvents().Committed();
    }

    // All six columns of a row, joined by "|".
    Text row(int index)
    {
        Text line;
        for (int column = 0; column < control.fgData.columnCount(); ++column)
            line += (column == 0 ? L"" : L"|") + Text(control.fgData.text(index, column));
        return line;
    }

    // Summary texts of all rows.
    Transcript summaries()
    {
        Transcript texts;
        for (int index = 0; index < control.fgData.rowCount(); ++index)
            texts.emplace_back(control.fgData.text(index, GridColumn::Summary));
        return texts;
    }

    // "AED" with "-" for a disabled button, then "V" for visit detail.
    Text enabledCommands()
    {
        Text text;
        for (std::size_t i = 0; i < control.cmd.size(); ++i) {
            EXPECT_EQ(control.cmd[i].isEnabled(), control.mnuCmd[i].isEnabled());
            text += control.cmd[i].isEnabled() ? TextView(L"AED")[i] : L'-';
        }
        return text + (control.mnuVisitDetail.isEnabled() ? L'V' : L'-');
    }

    ScriptedHost host;
    modShared shared { host.desktop };
    kalmevRepHistCtrl control { shared, host };
};

}
