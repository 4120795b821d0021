#pragma once

#include <QLayout>

#include <memory>
#include <vector>

namespace health {

// Places widgets beside each other and goes on in a further line where they do not fit. A widget that is wider than
// a line gets the whole line.
class FlowLayout : public QLayout {
public:
    // Distances between neighbours and between lines, in pixels.
    void setGaps(QSize gaps);

    void addItem(QLayoutItem* item) override { m_items.emplace_back(item); }
    int count() const override { return static_cast<int>(m_items.size()); }
    QLayoutItem* itemAt(int index) const override;
    QLayoutItem* takeAt(int index) override;

    Qt::Orientations expandingDirections() const override { return {}; }
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override { return arrange({ 0, 0, width, 0 }, Purpose::Measure); }
    QSize sizeHint() const override; // in one line
    QSize minimumSize() const override;
    void setGeometry(const QRect& place) override;

private:
    enum class Purpose { Measure, Place };
    int arrange(const QRect& place, Purpose purpose) const;

    std::vector<std::unique_ptr<QLayoutItem>> m_items;
    QSize m_gaps;
};

}
