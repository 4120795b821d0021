#include "host/windows/JournalModel.h"

#include "host/session/JournalText.h"
#include "toolkit/Inks.h"

#include <QApplication>
#include <QPainter>
#include <QPixmap>
#include <QTimer>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace health {

namespace {

constexpr int LookPause = 200; // milliseconds between two looks at the journal

// A triangle that points upwards: a call that took long. Its word stands beside it.
QPixmap slowMark()
{
    const QFontMetrics metrics(QApplication::font());
    const int side = metrics.ascent();
    const double ratio = qApp->devicePixelRatio();
    QPixmap mark(QSize(side, side) * ratio);
    mark.setDevicePixelRatio(ratio);
    mark.fill(Qt::transparent);
    QPainter painter(&mark);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colourOf(Ink::Caution, QApplication::palette()));
    painter.drawPolygon(
        QPolygonF({ { side / 2.0, side * 0.1 }, { side * 0.95, side * 0.9 }, { side * 0.05, side * 0.9 } }));
    return mark;
}

bool isNumber(int column)
{
    return column == JournalColumn::Duration || column == JournalColumn::Sent || column == JournalColumn::Received;
}

QString spoken(const JournalEntry& entry, int column)
{
    const QString text = journalText(entry, column);
    if (text.isEmpty())
        return {};
    const bool isSize = column == JournalColumn::Sent || column == JournalColumn::Received;
    return u"%1: %2%3"_s.arg(journalHeadings()[column], text, isSize ? u" bytes"_s : QString());
}

}

JournalModel::JournalModel(CallJournal& journal, QObject* parent)
    : QAbstractTableModel(parent)
    , m_journal(journal)
{
    connect(&journal, &CallJournal::changed, this, [this] {
        if (!std::exchange(m_following, true))
            QTimer::singleShot(LookPause, this, &JournalModel::follow);
    });
    follow();
}

void JournalModel::follow()
{
    m_following = false;
    const auto& entries = m_journal.entries();
    const qint64 first = entries.empty() ? 0 : entries.front().id;
    const auto kept = std::find_if(m_shown.begin(), m_shown.end(),
        [&](const JournalEntry& entry) { return !entries.empty() && entry.id >= first; });
    if (kept != m_shown.begin()) {
        beginRemoveRows({}, 0, static_cast<int>(kept - m_shown.begin()) - 1);
        m_shown.erase(m_shown.begin(), kept);
        endRemoveRows();
    }
    const auto old = static_cast<std::ptrdiff_t>(m_shown.size());
    std::copy_n(entries.begin(), old, m_shown.begin());
    if (old > 0)
        Q_EMIT dataChanged(index(0, 0), index(static_cast<int>(old) - 1, JournalColumn::Count - 1));
    if (entries.size() > m_shown.size()) {
        beginInsertRows({}, static_cast<int>(old), static_cast<int>(entries.size()) - 1);
        m_shown.insert(m_shown.end(), entries.begin() + old, entries.end());
        endInsertRows();
    }
    Q_EMIT followed();
}

const JournalEntry* JournalModel::entry(int row) const
{
    return row >= 0 && row < static_cast<int>(m_shown.size()) ? &m_shown[static_cast<std::size_t>(row)] : nullptr;
}

int JournalModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_shown.size());
}

int JournalModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : JournalColumn::Count; }

QVariant JournalModel::data(const QModelIndex& index, int role) const
{
    const JournalEntry* const entry = index.isValid() ? this->entry(index.row()) : nullptr;
    if (!entry)
        return {};
    const int column = index.column();
    switch (role) {
    case Qt::DisplayRole:
        return journalText(*entry, column);
    case Qt::DecorationRole:
        return column == JournalColumn::Duration && entry->isSlow() ? QVariant(slowMark()) : QVariant();
    case Qt::TextAlignmentRole:
        return QVariant(Qt::AlignVCenter | (isNumber(column) ? Qt::AlignRight : Qt::AlignLeft));
    case Qt::AccessibleTextRole:
        return spoken(*entry, column);
    default:
        return {};
    }
}

QVariant JournalModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal)
        return {};
    if (role == Qt::DisplayRole)
        return journalHeadings().value(section);
    if (role == Qt::TextAlignmentRole)
        return QVariant(Qt::AlignVCenter | (isNumber(section) ? Qt::AlignRight : Qt::AlignLeft));
    return {};
}

}
