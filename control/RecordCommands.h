#pragma once

#include "control/EditKeys.h"
#include "control/RecordTypes.h"
#include "shared/modShared.h"

namespace health {

// Adds, edits and deletes records, and decides what the user may do with them. Does not update the list, which follows
// the server's events. An unknown type number permits nothing. Operations throw what the host throws; failed server
// calls are shown.
class RecordCommands {
public:
    // Both must outlive the object.
    RecordCommands(modShared& shared, const EditKeys& keys)
        : m_shared(shared)
        , m_keys(keys)
    {
    }

    // Why the user may not change records of the type, in words for the user; empty if the user may. Without a type
    // (0), what to select.
    Text whyNotEditable(int type) const;
    // Why no record of the type can be added: the same, or there is no visit although it needs one. Never prompts.
    Text whyNotAddable(int type) const;

    // Opens the type's editor and returns when it is closed; an empty record adds one. Uses the active visit when one
    // is needed and none is given. If the editor cannot open, a box says why.
    void open(int type, const Text& record, Text visit);
    // Deletes a record after the user's confirmation. `label` names it in the question.
    // False if it was not deleted.
    bool remove(int type, const Text& record, const Text& label);

private:
    const RecordType* typeForPatient(int number) const;
    Text refusalOf(const RecordType& type) const;
    Text whatToSelect(TextView missing) const;
    bool checkPermitted(int type);
    void showEditor(RecordTypeNumber number, const Text& record, const Text& visit);

    modShared& m_shared;
    const EditKeys& m_keys;
};

}
