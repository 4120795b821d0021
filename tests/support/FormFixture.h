#pragma once

#include "tests/support/Replies.h"
#include "tests/support/ScriptedHost.h"

#include "platform/controls/mevZvDate.h"

#include <gtest/gtest.h>

namespace health::test {

// A form on a scripted host, opened as the desktop opens it and operated by its controls.
template<typename EditorForm>
class FormFixture : public testing::Test {
protected:
    FormFixture()
    {
        shared.InitObjects(host, false);
        host.patient->patientNumber = 12;
        host.transcript.clear();
    }

    void reply(TextView call, TextView text) { host.session->reply(call, text); }

    void open() { open(form); }
    static void open(EditorForm& opened)
    {
        opened.load();
        opened.open();
        opened.Form_Activate();
    }

    void enterDate(mevZvDate& date, TextView text)
    {
        form.moveFocus(date);
        date.enter(text, host.desktop.today);
    }

    // Enters a box and types over its text.
    void typeInto(TextBox& box, TextView text)
    {
        form.moveFocus(box);
        box.edit(L"");
        box.type(text);
    }

    // Whether the box can be left after the text was typed.
    bool accepts(TextBox& box, TextView text)
    {
        typeInto(box, text);
        const bool left = form.moveFocus(form.cmdAdd);
        if (!left)
            box.edit(L"");
        return left;
    }

    ScriptedHost host;
    modShared shared { host.desktop };
    EditorForm form { shared };
};

}
