#pragma once

#include <QGridLayout>
#include <QPointer>
#include <QWidget>

#include <algorithm>

namespace health {

// The vertical line between the captions of a column and their values. Its rows are grids with the caption in the first
// column; the widest caption decides.
class CaptionAxis {
public:
    // `caption` is null for a row that only begins at the axis.
    void add(QGridLayout& row, QWidget* caption)
    {
        m_rows.append(&row);
        if (caption)
            m_captions.append(caption);
    }

    // After captions were added or changed.
    void settle()
    {
        int widest = 0;
        for (const QPointer<QWidget>& caption : m_captions)
            widest = std::max(widest, caption ? caption->sizeHint().width() : 0);
        for (const QPointer<QGridLayout>& row : m_rows) {
            if (row && row->columnMinimumWidth(0) != widest)
                row->setColumnMinimumWidth(0, widest);
        }
    }

private:
    QList<QPointer<QGridLayout>> m_rows;
    QList<QPointer<QWidget>> m_captions;
};

}
