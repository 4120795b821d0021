#pragma once

#include "text/DateEntries.h"

#include <QAbstractTableModel>

namespace health {

// The days of a month in six weeks of seven columns, beginning with Sunday. Cells before and after the month are empty.
class MonthModel : public QAbstractTableModel {
    Q_OBJECT
public:
    static constexpr int Weeks = 6;

    MonthModel(const DateRange& allowed, Moment today, QObject* parent);

    // Shows the month of a day.
    void showMonthOf(Moment day);
    // The day of a cell; empty outside the month.
    std::optional<Moment> day(const QModelIndex& index) const;
    // The cell of a day of the month.
    QModelIndex indexOf(Moment day) const;

    bool isAllowed(Moment day) const { return m_allowed.contains(day); }
    bool isToday(Moment day) const { return day == m_today; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    // A day that the field refuses can be reached but not selected.
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    QString spokenName(Moment day) const;

    DateRange m_allowed;
    Moment m_today;
    Moment m_first; // the month's first day
    Moment m_next; // the first day after the month
    int m_blanks = 0; // empty cells before the first day
};

}
