#pragma once

#include "api/Text.h"

#include <vector>

namespace health {

class Control;
class Form;

// What the fields of a form hold, in the order of its arrangement. Two snapshots of forms of the same class are equal
// if the user sees the same entries in both.
class EntrySnapshot {
public:
    EntrySnapshot() = default;
    explicit EntrySnapshot(Form& form);

    bool operator==(const EntrySnapshot&) const = default;

    // Puts the entries into the fields of a form of the same class. The controls raise their events.
    void restoreValues(Form& form) const;
    // Afterwards: what was being typed into date fields, which must be enabled by now.
    void restoreTyping(Form& form) const;

private:
    friend class EntryReader;
    friend class EntryWriter;
    friend class TypingWriter;

    struct Entry {
        Text text;
        Text hidden; // the tag of a text box; the value of a date whose text is being typed
        int index = -1;
        std::vector<int> checked;

        bool operator==(const Entry&) const = default;
    };

    std::vector<Entry> m_entries;
};

}
