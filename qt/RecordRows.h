#pragma once

#include "qt/RowSetter.h"
#include "records/RecordNews.h"
#include "text/FoldedLetters.h"

#include <QStringList>

#include <optional>
#include <unordered_map>

namespace health {

class GridModel;
class ShownRecords;
enum class FoundIn;

// What the list's rows show, apart from drawing it: typeset texts, marks, and what screen readers say about them. Rows
// are those of the model. Sets the texts that are asked for, and keeps them until the records or the width change.
class RecordRows {
public:
    // Both must outlive the object.
    RecordRows(const ShownRecords& records, const GridModel& model)
        : m_records(records)
        , m_model(model)
    {
    }

    // The records have changed.
    void reset();
    // The lines of the summaries; see RowSetter::set.
    void setRoom(const QFont& font, int width, int narrow);
    const QFont& font(RowStyle style) const { return m_setter.font(style); }

    // Null for a row without a record.
    const ListedRecord* record(int row) const;
    TextView summary(int row) const;
    const RowText& text(int row);
    // The letters that the user's search has found.
    std::vector<TextRange> found(int row, FoundIn column) const;
    // The first row, or one whose kind differs from the row above.
    bool beginsKind(int row) const;

    // What is new since the user last looked.
    RecordNews news;
    RecordNews::Mark mark(int row) const;
    // The names of the records that are gone and stood before a row; before the row behind the last one, at the end.
    QStringList goneBefore(int row) const;
    // The marks beside a row in words.
    QStringList marksInWords(int row) const;

    // Whether the rows are shown quietly, because the server is not connected.
    bool isAway = false;

private:
    const ListedRecord* earlier(int gridRow);
    bool isShownAt(int gridRow, int row) const;

    const ShownRecords& m_records;
    const GridModel& m_model;
    RowSetter m_setter;
    std::optional<QFont> m_font;
    int m_width = 0;
    int m_narrow = 0;
    std::unordered_map<int, RowText> m_texts; // by the grid's row
    std::optional<std::vector<int>> m_earlier; // functional status, once it is asked for
};

// "1 record is gone since you last looked: Refusal 09/22/2026"; empty without names.
QString goneInWords(const QStringList& names);

}
