#pragma once

#include "platform/Form.h"
#include "platform/TextBox.h"
#include "shared/modShared.h"

namespace health {

// What the record editors share: the error trap under their own names, the first activation, OK and Cancel.
class EditorForm : public Form {
public:
    void Form_Activate() final;

    Button cmdAdd;
    Button cmdCancel;

protected:
    EditorForm(modShared& shared, TextView name, TextView caption);

    // The work of the first activation; coming back from a dialog does not repeat it.
    virtual void activate() = 0;
    bool wasActivated() const { return m_activated; }

    // A handler that runs under the error trap as the procedure of that name.
    std::function<void()> trapped(TextView procedure, std::function<void()> work);
    void trap(TextView procedure, const std::function<void()>& work) { m_shared.trap(name(), procedure, work); }

    // A field whose value is picked by a lookup: entering it makes the lookup the default, a text without an id is
    // looked up on leaving, an unresolved one cleared.
    void bindLookup(TextBox& field, Button& button, std::function<void()> lookup);

    modShared& m_shared;

private:
    void leaveLookupField(TextBox& field, const std::function<void()>& lookup);

    bool m_activated = false;
};

}
