#pragma once

#include "platform/Form.h"
#include "platform/controls/TextBox.h"
#include "shared/modShared.h"

namespace health {

// What the record editors share: the error trap under their own names, the first activation, reading and saving,
// fields with a lookup, Cancel.
class EditorForm : public Form {
public:
    void Form_Activate() final;

    Button cmdCancel;

protected:
    EditorForm(modShared& shared, TextView name, TextView caption);

    // The work of the first activation; coming back from a dialog does not repeat it.
    virtual void activate() = 0;
    bool wasActivated() const { return m_activated; }

    // The patient whose record the form shows: the one of its first reading, whatever the host does meanwhile.
    const Text& patient();

    // A handler that runs under the error trap as the procedure of that name.
    template<typename Work>
    auto trapped(TextView procedure, Work work)
    {
        return m_shared.trapped(name(), procedure, std::move(work));
    }
    void trap(TextView procedure, const std::function<void()>& work) { m_shared.trap(name(), procedure, work); }

    // The button that saves: "&OK", pressed by Enter; `work` runs as the procedure of that name.
    void bindSave(Button& button, TextView procedure, std::function<void()> work);

    // The reply of the list call that reads the form's record; empty when the server refused it, which a box has said.
    Text readRecord(TextView call, TextView parameter);
    // The same for a call that a hint has announced.
    Text readAnnounced(TextView call, TextView parameter);
    // Calls the server to change something; false when it refused, which a box has said.
    bool send(TextView call, TextView parameter);
    // The same with the pieces of a record, and closes the form when the server took it.
    void save(TextView call, const std::vector<Text>& pieces);
    // Warns that something is missing, and takes the user to it.
    void askFor(Control& missing, TextView text, TextView title);

    // What becomes of the id when the user types over a name that a lookup gave. Where it stays, so does the name: the
    // field never shows another one than is saved.
    enum class TypedOver {
        KeepsId,
        ClearsId,
    };
    // What the form does at the save about a field that names nothing.
    enum class Unnamed {
        IsRefused,
        IsSaved,
    };
    // A field whose value is picked by a lookup: entering it makes the lookup the default, a text without an id is
    // looked up on leaving, an unresolved one cleared. Where nothing else would tell the user, that stops the button
    // that is being pressed.
    void bindLookup(TextBox& field, Button& button, TypedOver typedOver, Unnamed unnamed, std::function<void()> lookup);
    // Looks the field's text up in a table. A choice goes into the field, an empty choice clears it; cancelling changes
    // nothing and gives false.
    bool lookUp(TextBox& field, int table);
    // Puts a name and its id into such a field.
    void setPicked(TextBox& field, TextView name, TextView id);

    modShared& m_shared;

private:
    struct LookupField {
        TypedOver typedOver;
        Unnamed unnamed;
        Text picked; // the name that came with the id
        Text searched; // by the button; leaving the field does not ask the same again
        std::function<void()> lookup;
    };
    void leaveLookupField(TextBox& field, const LookupField& lookupField);

    Text m_patient;
    std::map<TextBox*, LookupField> m_lookupFields;
    Button* m_save = nullptr;
    bool m_activating = false; // what it calls may let the window become active once more
    bool m_activated = false;
};

// A name as lists show it: SMITH,JOHN is Smith, John.
Text spacedName(TextView name);

}
