#pragma once

#include "control/EditKeys.h"
#include "control/RecordTypes.h"
#include "shared/modShared.h"

namespace health {

// What the user may do with a record, and doing it: adding, editing, deleting. Knows nothing of the list, which follows
// by the server's events. Type numbers without a type are allowed and permit nothing. Operations throw what the host
// throws; failed calls are shown.
class RecordCommands {
public:
    // Both must outlive the object.
    RecordCommands(modShared& shared, const EditKeys& keys)
        : m_shared(shared)
        , m_keys(keys)
    {
    }

    // The user may change records of the type.
    bool isPermitted(int type) const;
    // The same, and there is a visit if the record needs one. Never prompts.
    bool canAdd(int type) const;

    // Opens the type's editor, with the active visit if none is named and one is needed; an empty record adds one.
    // Returns when the editor is closed. Tells the user why it does not open.
    void open(int type, const Text& record, Text visit);
    // Deletes a record after the user's confirmation. `label` names it in the question.
    void remove(int type, const Text& record, const Text& label);

private:
    Text refusalOf(const RecordType& type) const;
    bool checkPermitted(int type);
    void showEditor(RecordTypeNumber number, const Text& record, const Text& visit);

    modShared& m_shared;
    const EditKeys& m_keys;
};

}
