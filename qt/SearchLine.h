#pragma once

#include "qt/EntryLine.h"

namespace health {

class FieldButton;

// A field for words to search for, with a magnifier, and a cross that empties it.
class SearchLine : public EntryLine {
public:
    explicit SearchLine(QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint() / 2; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    FieldButton* m_clear;
};

}
