#include "records/RecordNews.h"

#include "text/FileManDates.h"

#include <algorithm>
#include <functional>
#include <unordered_map>
#include <utility>

namespace health {

namespace {

using Types = std::vector<const RecordType*>;

bool holds(const Types& types, const RecordType* type) { return std::ranges::find(types, type) != types.end(); }

std::size_t digestOf(TextView text) { return std::hash<TextView>()(text); }

}

RecordNews::Seen::Seen(const ListedRecord& record)
    : key(record.key)
    , type(record.type)
    , date(recordDate(record))
    , digest(digestOf(record.summary))
{
}

Text RecordNews::Seen::name() const
{
    const Text day = FMDateToDate(date, TimePart::Without);
    return Text(type->rowLabel) + (day.empty() ? L"" : L" ") + day;
}

void RecordNews::show(long patient, const std::vector<ListedRecord>& records, const Types& unread)
{
    if (patient != m_patient)
        leavePatient();
    const auto left = m_left.find(patient);
    const bool isFirst = patient != m_patient && left == m_left.end();
    if (isFirst) {
        m_unread = unread;
        for (const ListedRecord& record : records)
            m_rows.push_back({ Seen(record), digestOf(record.summary) });
    } else {
        compare(patient == m_patient ? reference() : left->second, records, unread);
    }
    m_patient = patient;
    m_left.erase(patient);
    m_removed.clear();
}

// What the user has seen of the present patient.
RecordNews::Reference RecordNews::reference() const
{
    Reference reference { {}, m_unread };
    auto missing = m_missing.begin();
    const auto takeMissing = [&](int row) {
        for (; missing != m_missing.end() && missing->before <= row; ++missing)
            reference.records.push_back(missing->seen);
    };
    for (std::size_t row = 0; row < m_rows.size(); ++row) {
        takeMissing(static_cast<int>(row));
        if (m_rows[row].mark != Mark::New)
            reference.records.push_back(m_rows[row].seen);
    }
    takeMissing(static_cast<int>(m_rows.size()));
    reference.records.insert(reference.records.end(), m_kept.begin(), m_kept.end());
    return reference;
}

void RecordNews::leavePatient()
{
    for (std::size_t row = 0; row < m_rows.size(); ++row)
        see(static_cast<int>(row));
    m_missing.clear();
    if (m_patient != 0)
        m_left.insert_or_assign(m_patient, reference());
    m_patient = 0;
    m_rows.clear();
    m_kept.clear();
    m_unread.clear();
}

void RecordNews::compare(const Reference& reference, const std::vector<ListedRecord>& records, const Types& unread)
{
    struct Known {
        const Seen* seen;
        int row = -1; // in the new list
    };
    std::unordered_map<TextView, Known> known;
    for (const Seen& seen : reference.records)
        known.try_emplace(seen.key, Known { &seen });
    std::vector<Row> rows;
    rows.reserve(records.size());
    for (const ListedRecord& record : records) {
        Row row { Seen(record), digestOf(record.summary) };
        if (const auto found = known.find(record.key); found != known.end()) {
            found->second.row = static_cast<int>(rows.size());
            row.seen.digest = found->second.seen->digest;
            row.mark = row.seen.digest == row.digest ? Mark::None : Mark::Changed;
        } else if (!holds(reference.unread, record.type)) {
            row.mark = Mark::New;
        }
        rows.push_back(std::move(row));
    }
    std::vector<Missing> missing;
    std::vector<Seen> kept;
    int before = 0;
    for (const Seen& seen : reference.records) {
        if (const int row = known.at(seen.key).row; row != -1)
            before = row + 1;
        else if (holds(unread, seen.type))
            kept.push_back(seen);
        else if (seen.key != m_removed)
            missing.push_back({ before, seen });
    }
    std::ranges::stable_sort(missing, {}, &Missing::before);
    m_unread = reference.unread;
    std::erase_if(m_unread, [&](const RecordType* type) { return !holds(unread, type); });
    m_rows = std::move(rows);
    m_missing = std::move(missing);
    m_kept = std::move(kept);
}

RecordNews::Mark RecordNews::mark(int row) const
{
    return row >= 0 && row < static_cast<int>(m_rows.size()) ? m_rows[static_cast<std::size_t>(row)].mark : Mark::None;
}

std::vector<RecordNews::Gone> RecordNews::gone() const
{
    std::vector<Gone> gone;
    for (const Missing& missing : m_missing)
        gone.push_back({ missing.before, missing.seen.name() });
    return gone;
}

// Looking at a row, the user also sees what is gone beside it.
void RecordNews::see(int row)
{
    if (row < 0 || row >= static_cast<int>(m_rows.size()))
        return;
    Row& seen = m_rows[static_cast<std::size_t>(row)];
    seen.seen.digest = seen.digest;
    seen.mark = Mark::None;
    std::erase_if(
        m_missing, [&](const Missing& missing) { return missing.before == row || missing.before == row + 1; });
}

void RecordNews::forget() { *this = {}; }

}
