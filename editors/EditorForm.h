#pragma once

#include "editors/DateRules.h"
#include "platform/EntrySnapshot.h"
#include "platform/EntryTexts.h"
#include "platform/Form.h"
#include "platform/controls/TextBox.h"
#include "platform/controls/mevZvDate.h"
#include "shared/modShared.h"

#include <map>
#include <memory>
#include <optional>

namespace health {

// What an editor edits.
struct RecordKind {
    TextView name; // as the list shows it
    TextView event; // the end of the names of its events
    bool isListed = true; // the panel's list has a row for it
};

// The common base of the record editors: error reports under their own names, the first activation, reading and saving,
// lookup fields, Cancel, and the user's entries: those that were not saved are kept, and changes of the record by
// another session can be compared with them.
class EditorForm : public Form, private FormWatcher {
public:
    ~EditorForm() override;

    void Form_Activate() final;

    FormHeading heading() override;
    Explanation explain(const Control& field) final;
    FormNotice notice() override;
    void followNotice() override;

    Button cmdCancel;

protected:
    EditorForm(modShared& shared, TextView name, TextView caption, RecordKind kind);

    // A new form for the same record, to be opened or to be read for a comparison; null if the form has no entries.
    virtual std::unique_ptr<EditorForm> another() const { return nullptr; }
    // Creates it: a form of the same class in which these fields are the same.
    template<typename Editor, typename... Fields>
    static std::unique_ptr<EditorForm> anotherOf(const Editor& original, Fields... fields)
    {
        auto form = std::make_unique<Editor>(original.m_shared);
        ((form.get()->*fields = original.*fields), ...);
        return form;
    }
    // The number of the existing record; empty if the form adds one.
    virtual Text recordNumber() const = 0;
    // The form's state beside its fields, as a text; restored with the fields.
    virtual Text ownState() const { return {}; }
    // Kept entries are in the fields again: restores the form's own state, and what depends on the entries.
    virtual void entriesRestored(TextView) { }

    // The visit of the record, for the heading: its number, empty if such records have no visit, and the piece with
    // its date in a record that was read.
    virtual Text visitNumber() const { return {}; }
    void setVisitDate(TextView piece);
    // The date of an existing record that has no visit, for the heading.
    void setRecordDate(TextView date) { m_recordDate = date; }
    // What the form says about a date, and about any other field.
    virtual Explanation explainDate(const mevZvDate& date);
    virtual Explanation explainEntry(const Control&) { return {}; }
    // The field that a refusal of the server is about, null if that is unknown. A refused save moves the focus there.
    virtual Control* fieldOf(TextView) { return nullptr; }
    // Shows why an entry is refused, in a box and then beside the field until its next entry.
    void refuse(Control& field, TextView message, TextView title);
    // The same for a date, which another text then replaces; `remark` says so beside the field.
    void refuseDate(mevZvDate& date, const DateRefusal& why, TextView replacement, TextView remark);
    // Why the rule of the field refuses its value; no message if it accepts the value.
    DateRefusal judged(const mevZvDate& date) const { return m_dateRules.judged(date, m_shared.desktop().now()); }

    // Called on the first activation only, not when the user returns from a dialog.
    virtual void activate() = 0;
    bool wasActivated() const { return m_activated; }

    // The same, empty before the first activation.
    const Text& openedFor() const { return m_patient; }
    // The number of the patient whose record the form shows; does not change when the host selects another one.
    const Text& patient();

    // An event handler that reports failures under the procedure's name. It does nothing while kept entries are
    // restored.
    template<typename Work>
    auto trapped(TextView procedure, Work work)
    {
        return m_shared.trapped(name(), procedure, [this, work = std::move(work)](auto&&... arguments) {
            if (!m_restoring)
                work(arguments...);
        });
    }
    void trap(TextView procedure, const std::function<void()>& work) { m_shared.trap(name(), procedure, work); }

    // Makes the button the save button: captioned "&OK", the default button. Failures of `work` are reported under the
    // procedure's name.
    void bindSave(Button& button, TextView procedure, std::function<void()> work);

    // Reads the form's record by a list call; empty after a server error, which has been shown.
    Text readRecord(TextView call, TextView parameter);
    // The same for a call that the form has already announced by a CallHint.
    Text readAnnounced(TextView call, TextView parameter);
    // Makes a call that changes data; false after a server error, which has been shown, and, without a call, if the
    // host has selected another patient.
    bool send(TextView call, TextView parameter);
    // Sends the pieces of a record and closes the form on success.
    void save(TextView call, const std::vector<Text>& pieces);
    // Closes the form after send() has succeeded.
    void closeSaved();
    // The host has selected another patient than the form's.
    bool isForeign() const;
    // Warns that a value is missing and moves the focus to its control.
    void askFor(Control& missing, TextView text, TextView title);

    // Whether typing over a name that was looked up clears its id. If the id stays, the name is restored on leaving, so
    // that the field always shows what is saved.
    enum class TypedOver {
        KeepsId,
        ClearsId,
    };
    // How saving treats an empty lookup field.
    enum class Unnamed {
        IsRefused,
        IsSaved,
    };
    // Makes the field a lookup field: while it has the focus, its lookup button is the default button; on leaving, a
    // text without an id is looked up, and cleared if that fails. If clearing the field would otherwise go unnoticed,
    // the pending button press is cancelled.
    void bindLookup(TextBox& field, Button& button, TypedOver typedOver, Unnamed unnamed, std::function<void()> lookup);
    // Looks up the field's text in a table. Puts the choice into the field; an empty choice clears it. Cancelling
    // changes nothing and returns false.
    bool lookUp(TextBox& field, int table);
    // Puts a name and its id into a lookup field.
    void setPicked(TextBox& field, TextView name, TextView id);
    // Notes that the server found one match only, which was therefore taken without a question.
    static void noteSingleMatch(TextBox& field, TextView typed, bool isSingle);
    // The name that came with a lookup field's id; empty without an id.
    Text pickedName(const TextBox& field) const;
    // Its id as leaving the field keeps it: empty if the user has cleared or replaced the name.
    Text pickedId(const TextBox& field) const { return pickedName(field).empty() ? Text() : field.tag(); }
    // What a lookup field will save: the name as people read it, or that its text has not been looked up yet.
    Explanation explainLookup(const TextBox& field) const;
    // Notes why the program has emptied a field that held a text.
    static void noteRemoved(Control& field, TextView removed, TextView why);
    static constexpr TextView NothingChosen = L"nothing was chosen";
    // The date that leaving the field makes of its text.
    Text dateEntered(const mevZvDate& date) const { return date.understood(date.shown(), m_shared.desktop().now()); }

    modShared& m_shared;
    DateRules m_dateRules;

private:
    struct LookupField {
        TypedOver typedOver;
        Unnamed unnamed;
        Text picked; // the name that came with the id
        Text searched; // with the button; leaving the field does not repeat this search
        std::function<void()> lookup;
    };
    // The entries of a form that was closed.
    struct Draft {
        std::vector<EntryText> before; // the record as the form had read it
        EntrySnapshot fields;
        std::vector<Text> picked; // the names in the lookup fields
        Text ownState;
        bool mayBeStored; // the reply to its save was lost
    };

    void patientChanged() override;
    void recordsChanged(TextView kind) override;
    void restoreDraft();
    void cancel();
    void keepEntries(TextView offer);
    void focusRefused(TextView reply);
    Text savedText() const;
    void readCurrentVisit();
    void leaveLookupField(TextBox& field, const LookupField& lookupField);
    void clearUnchosen(TextBox& field, const LookupField& lookupField);

    const RecordKind m_kind;
    EntrySnapshot m_original; // the fields as the record was read
    std::vector<EntryText> m_originalTexts;
    std::optional<Draft> m_draft; // to be restored by the first activation
    Text m_change; // the notice that the record has, or may have, changed; empty while no change is known
    bool m_restoring = false;
    bool m_saveLost = false; // the user has given up the call that saved
    Text m_patient;
    FormHeading m_heading; // of the patient for whom the form was opened
    bool m_isOfCurrentVisit = false;
    Text m_visitDate;
    Text m_recordDate;
    std::map<const TextBox*, LookupField> m_lookupFields;
    Button* m_save = nullptr;
    bool m_activating = false; // activation can be re-entered while a nested dialog closes
    bool m_activated = false;
};

// A name as lists show it: SMITH,JOHN becomes Smith, John.
Text spacedName(TextView name);

}
