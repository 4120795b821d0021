#pragma once

#include <QHeaderView>

namespace health {

// The headings above a grid's columns: quiet, with a hairline below.
class GridHeading : public QHeaderView {
public:
    explicit GridHeading(QWidget* parent);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};

}
