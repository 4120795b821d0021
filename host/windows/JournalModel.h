#pragma once

#include "host/session/CallJournal.h"

#include <QAbstractTableModel>

namespace health {

// The call journal as a table, the latest entry at the end. Follows the journal a few times a second, and never inside
// a call.
class JournalModel : public QAbstractTableModel {
    Q_OBJECT
public:
    // The journal must outlive the model.
    JournalModel(CallJournal& journal, QObject* parent);

    // The entry of a row; null for a row that does not exist.
    const JournalEntry* entry(int row) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

Q_SIGNALS:
    // Rows were added, changed or dropped.
    void followed();

private:
    void follow();

    CallJournal& m_journal;
    std::deque<JournalEntry> m_shown;
    bool m_following = false; // follow() has been requested
};

}
