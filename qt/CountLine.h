#pragma once

#include <QWidget>

namespace health {

class FindBar;
class PillButton;
class ShownRecords;
class ToneLabel;

// Above the list at the right: how many records are shown, and the button that opens the bar to find some. Where room
// is short, explanations and captions are left out, then everything; the count goes last.
class CountLine : public QWidget {
public:
    // Both must outlive the line.
    CountLine(ShownRecords& records, FindBar& bar, QWidget* parent);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void arrange();
    int place(QWidget& part, int right);

    ShownRecords& m_records;
    FindBar& m_bar;
    ToneLabel* m_count;
    PillButton* m_find;
};

}
