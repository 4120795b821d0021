#include "qt/ShownRecords.h"

#include "control/kalmevRepHistCtrl.h"

#include <algorithm>
#include <numeric>

namespace health {

ShownRecords::ShownRecords(kalmevRepHistCtrl& control)
    : m_control(control)
{
    read();
}

bool ShownRecords::isShown(int row) const { return std::find(m_rows.begin(), m_rows.end(), row) != m_rows.end(); }

int ShownRecords::selected() const
{
    const int row = m_control.fgData.row();
    return row < static_cast<int>(m_all.size()) ? row : -1;
}

void ShownRecords::gridChanged(Change change)
{
    switch (change) {
    case Change::Contents:
    case Change::Colours:
        read();
        Q_EMIT reloaded();
        break;
    case Change::Selection:
        Q_EMIT selectionChanged();
        break;
    default:
        break;
    }
}

void ShownRecords::read()
{
    m_all = listedRecords(m_control);
    arrange();
}

void ShownRecords::arrange()
{
    m_rows.resize(m_all.size());
    std::iota(m_rows.begin(), m_rows.end(), 0);
}

}
