#include "qt/MonthModel.h"

#include "text/DateWords.h"
#include "toolkit/QtText.h"

namespace health {

using namespace Qt::StringLiterals;
using namespace std::chrono;

MonthModel::MonthModel(const DateRange& allowed, Moment today, QObject* parent)
    : QAbstractTableModel(parent)
    , m_allowed(allowed)
    , m_today(dateOf(today))
{
    showMonthOf(today);
}

void MonthModel::showMonthOf(Moment day)
{
    beginResetModel();
    const year_month_day date { floor<days>(day) };
    const auto month = date.year() / date.month();
    m_first = local_days { month / 1 };
    m_next = local_days { (month + months { 1 }) / 1 };
    m_blanks = static_cast<int>(weekday { floor<days>(m_first) }.c_encoding());
    endResetModel();
}

std::optional<Moment> MonthModel::day(const QModelIndex& index) const
{
    if (!index.isValid())
        return std::nullopt;
    const Moment day = m_first + days { index.row() * columnCount() + index.column() - m_blanks };
    return day >= m_first && day < m_next ? std::optional(day) : std::nullopt;
}

QModelIndex MonthModel::indexOf(Moment day) const
{
    const int cell = static_cast<int>(floor<days>(day - m_first).count()) + m_blanks;
    return index(cell / columnCount(), cell % columnCount());
}

int MonthModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : Weeks; }

int MonthModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(WeekdayNames.size());
}

QVariant MonthModel::data(const QModelIndex& index, int role) const
{
    const auto shown = day(index);
    if (!shown)
        return {};
    if (role == Qt::DisplayRole)
        return QString::number(floor<days>(*shown - m_first).count() + 1);
    return role == Qt::AccessibleTextRole ? spokenName(*shown) : QVariant();
}

QString MonthModel::spokenName(Moment day) const
{
    QString name = toQString(fullDayName(day));
    if (isToday(day))
        name += u", today"_s;
    if (!isAllowed(day))
        name += u", not allowed"_s;
    return name;
}

QVariant MonthModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return toQString(WeekdayNames[static_cast<std::size_t>(section)]);
}

Qt::ItemFlags MonthModel::flags(const QModelIndex& index) const
{
    const auto shown = day(index);
    if (!shown)
        return Qt::NoItemFlags;
    return isAllowed(*shown) ? Qt::ItemIsEnabled | Qt::ItemIsSelectable : Qt::ItemIsEnabled;
}

}
