#pragma once

#include <QLayout>

#include <memory>
#include <vector>

namespace health {

// Lays widgets out in lines from left to right. A widget wider than a line gets the line's width; the others keep their
// preferred size. Distances follow the parent's font.
class FlowLayout : public QLayout {
public:
    explicit FlowLayout(QWidget* parent);
    ~FlowLayout() override;

    void addItem(QLayoutItem* item) override;
    void insertWidget(int index, QWidget* widget);
    int count() const override { return static_cast<int>(m_items.size()); }
    QLayoutItem* itemAt(int index) const override;
    QLayoutItem* takeAt(int index) override;
    Qt::Orientations expandingDirections() const override { return {}; }
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override { return minimumSize(); }
    QSize minimumSize() const override;
    void setGeometry(const QRect& place) override;

private:
    template<typename Work>
    int arrange(int width, Work work) const;

    std::vector<std::unique_ptr<QLayoutItem>> m_items;
};

}
