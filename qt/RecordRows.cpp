#include "qt/RecordRows.h"

#include "control/GridColumns.h"
#include "control/kalmevRepHistCtrl.h"
#include "qt/GridModel.h"
#include "qt/ShownRecords.h"
#include "toolkit/QtText.h"

#include <utility>

namespace health {

using namespace Qt::StringLiterals;

namespace {
constexpr std::size_t MostTexts = 2000; // in memory
}

void RecordRows::reset()
{
    m_texts.clear();
    m_earlier.reset();
}

void RecordRows::setRoom(const QFont& font, int width, int narrow)
{
    if (m_font != font) {
        m_font = font;
        m_setter.setFont(font);
        m_texts.clear();
    }
    if (std::exchange(m_width, width) != width || std::exchange(m_narrow, narrow) != narrow)
        m_texts.clear();
}

const ListedRecord* RecordRows::record(int row) const
{
    const int gridRow = m_model.gridRow(row);
    const auto& all = m_records.all();
    return gridRow < 0 || gridRow >= static_cast<int>(all.size()) ? nullptr : &all[static_cast<std::size_t>(gridRow)];
}

TextView RecordRows::summary(int row) const
{
    const int gridRow = m_model.gridRow(row);
    return gridRow == -1 ? TextView() : m_records.control().fgData.text(gridRow, GridColumn::Summary);
}

const RowText& RecordRows::text(int row)
{
    const int gridRow = m_model.gridRow(row);
    if (const auto known = m_texts.find(gridRow); known != m_texts.end())
        return known->second;
    if (m_texts.size() >= MostTexts)
        m_texts.clear();
    const ListedRecord* const listed = record(row);
    const auto runs =
        listed ? typeset(*listed, earlier(gridRow)) : std::vector { SummaryRun { SummaryPart::Value, summary(row) } };
    return m_texts.emplace(gridRow, m_setter.set(runs, m_width, m_narrow)).first->second;
}

std::vector<TextRange> RecordRows::found(int row, FoundIn column) const
{
    return record(row) ? m_records.found(m_model.gridRow(row), column) : std::vector<TextRange>();
}

// Only functional status shows what has changed.
const ListedRecord* RecordRows::earlier(int gridRow)
{
    const auto& all = m_records.all();
    const auto index = static_cast<std::size_t>(gridRow);
    if (all[index].type->number != RecordTypeNumber::FunctionalStatus)
        return nullptr;
    if (!m_earlier)
        m_earlier = earlierRecords(all, RecordTypeNumber::FunctionalStatus);
    const int before = (*m_earlier)[index];
    return before == -1 ? nullptr : &all[static_cast<std::size_t>(before)];
}

bool RecordRows::beginsKind(int row) const
{
    const ListedRecord* const here = record(row);
    const ListedRecord* const above = record(row - 1);
    return !here || !above || here->type != above->type;
}

RecordNews::Mark RecordRows::mark(int row) const { return news.mark(m_model.gridRow(row)); }

// A record that stood before a row that is not shown stands before the next one that is.
bool RecordRows::isShownAt(int gridRow, int row) const
{
    const int last = static_cast<int>(m_records.all().size());
    while (gridRow < last && m_model.modelRow(gridRow) == -1)
        ++gridRow;
    return row == (gridRow < last ? m_model.modelRow(gridRow) : m_model.rowCount());
}

QStringList RecordRows::goneBefore(int row) const
{
    QStringList names;
    for (const RecordNews::Gone& gone : news.gone()) {
        if (isShownAt(gone.before, row))
            names.append(toQString(gone.name));
    }
    return names;
}

QStringList RecordRows::marksInWords(int row) const
{
    QStringList words;
    const ListedRecord* const listed = record(row);
    if (!listed)
        return words;
    if (listed->isOfCurrentVisit)
        words.append(u"Record of the current visit"_s);
    if (mark(row) == RecordNews::Mark::New)
        words.append(u"New since you last looked"_s);
    if (mark(row) == RecordNews::Mark::Changed)
        words.append(u"Changed since you last looked"_s);
    if (listed->isLocked)
        words.append(u"Locked, cannot be changed"_s);
    return words;
}

QString goneInWords(const QStringList& names)
{
    if (names.isEmpty())
        return {};
    const QString count = names.size() == 1 ? u"1 record is"_s : u"%1 records are"_s.arg(names.size());
    return u"%1 gone since you last looked: %2"_s.arg(count, names.join(u", "_s));
}

}
