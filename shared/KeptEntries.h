#pragma once

#include "shared/SharedObjects.h"

#include <functional>
#include <vector>

namespace health {

// A record that was saved.
struct SavedRecord {
    Text kind; // the end of the names of its events, such as "VAST"; empty for a record that is not listed
    Text record; // its number, or the patient's if there is one record per patient; empty if it was added
    int sequence = 0; // counts the saves, from 1
};

// What became of the users' entries: the last record that was saved, and the entries that were discarded or whose save
// was lost, until the user takes them back or the host selects another patient. They are never stored.
class KeptEntries {
public:
    explicit KeptEntries(const SharedObjects& objects) // which must outlive the object
        : m_objects(objects)
    {
    }

    // Tells the host that a record was saved; `what` names it for the user.
    void noteSaved(TextView kind, TextView record, TextView what);
    const SavedRecord& lastSaved() const { return m_saved; }

    // Keeps an entry and offers it to the user through the host. `reopen` opens its form with the entry.
    void keepEntry(TextView offer, std::function<void()> reopen);
    // Opens the form of the entry that was kept last; without one it does nothing.
    void reopenEntry();
    void forgetEntries();

private:
    struct Kept {
        Text offer;
        std::function<void()> reopen;
    };

    void raise(TextView event, TextView data);
    void offerLast();

    const SharedObjects& m_objects;
    SavedRecord m_saved;
    std::vector<Kept> m_kept; // the latest is the last
};

}
