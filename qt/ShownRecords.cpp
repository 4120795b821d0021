#include "qt/ShownRecords.h"

#include "control/kalmevRepHistCtrl.h"

#include <algorithm>
#include <utility>

namespace health {

ShownRecords::ShownRecords(kalmevRepHistCtrl& control)
    : m_control(control)
{
    read();
}

bool ShownRecords::isShown(int row) const
{
    return row >= 0 && row < static_cast<int>(m_shown.size()) && m_shown[static_cast<std::size_t>(row)];
}

int ShownRecords::selected() const
{
    const int row = m_control.fgData.row();
    return row < static_cast<int>(m_all.size()) ? row : -1;
}

std::optional<std::vector<int>> ShownRecords::rearrangedRows() const
{
    const bool asLoaded = m_order == RecordOrder::AsLoaded && !isFiltered();
    return asLoaded || m_all.empty() ? std::nullopt : std::optional(m_found.rows);
}

void ShownRecords::gridChanged(Change change)
{
    switch (change) {
    case Change::Contents:
        read();
        Q_EMIT reloaded();
        break;
    case Change::Colours: // of one cell after the other
        if (!std::exchange(m_coloursChanged, true))
            QMetaObject::invokeMethod(this, &ShownRecords::readColours, Qt::QueuedConnection);
        break;
    case Change::Selection:
        deselectHidden();
        Q_EMIT selectionChanged();
        break;
    case Change::Flashed:
        Q_EMIT recordSaved(m_control.fgData.flashedRow());
        break;
    default:
        break;
    }
}

void ShownRecords::read()
{
    followPatient();
    m_all = listedRecords(m_control);
    m_finder.read(m_all);
    find();
    deselectHidden();
}

void ShownRecords::readColours()
{
    m_coloursChanged = false;
    read();
    Q_EMIT reloaded();
}

// No record of a patient may be hidden by what was searched for in another one's list.
void ShownRecords::followPatient()
{
    const long patient = m_control.listedPatient();
    if (std::exchange(m_patient, patient) == patient)
        return;
    m_filter = {};
    m_words.clear();
}

// --- Filter and order ---

void ShownRecords::setFilter(RecordFilter filter) { show(std::move(filter), m_order); }

void ShownRecords::setOrder(RecordOrder order) { show(m_filter, order); }

void ShownRecords::showAll() { show({}, RecordOrder::AsLoaded); }

void ShownRecords::show(RecordFilter filter, RecordOrder order)
{
    if (m_filter == filter && m_order == order)
        return;
    m_filter = std::move(filter);
    m_words = foldedWords(m_filter.words);
    m_order = order;
    find();
    deselectHidden();
    Q_EMIT rearranged();
}

void ShownRecords::find()
{
    m_found = m_finder.find(m_filter, m_order);
    m_shown.assign(m_all.size(), false);
    for (const int row : m_found.rows)
        m_shown[static_cast<std::size_t>(row)] = true;
}

void ShownRecords::deselectHidden()
{
    if (!m_all.empty() && m_control.fgData.row() != -1 && !isShown(m_control.fgData.row()))
        m_control.fgData.select(-1);
}

std::vector<ShownRecords::KindCount> ShownRecords::counts() const
{
    std::vector<KindCount> counts;
    const auto add = [&](const RecordType* type) {
        if (std::any_of(counts.begin(), counts.end(), [&](const KindCount& known) { return known.type == type; }))
            return;
        const auto count = m_found.counts.find(type->number);
        counts.push_back({ type, count == m_found.counts.end() ? 0 : count->second });
    };
    for (const ListedRecord& record : m_all)
        add(record.type);
    for (const RecordTypeNumber kind : m_filter.kinds)
        add(&recordType(kind));
    return counts;
}

std::vector<TextRange> ShownRecords::found(int row, FoundIn column) const
{
    if (m_words.empty() || row < 0 || row >= static_cast<int>(m_all.size()))
        return {};
    const ListedRecord& record = m_all[static_cast<std::size_t>(row)];
    return occurrences(column == FoundIn::Label ? record.label : record.summary, m_words);
}

}
