#pragma once

#include "records/RecordFilter.h"

#include <QTimer>
#include <QWidget>

class QComboBox;

namespace health {

class FlowLayout;
class PillButton;
class SearchLine;
class ShownRecords;
class ToneLabel;

// The bar above the list in which the user finds records: words, chips for the kinds, a year, the order. Each change
// takes effect immediately. While the bar is closed, all records are shown as they were loaded.
class FindBar : public QWidget {
    Q_OBJECT
public:
    // The records must outlive the bar.
    explicit FindBar(ShownRecords& records);

    bool isOpen() const { return !isHidden(); }
    void open();
    // Opens the bar and selects the words.
    void find();
    // Shows all records again and closes the bar. Does nothing if it is closed.
    void close();

    // "12 records", "3 of 12 records"; empty without a patient and while the list is loading.
    static QString countText(ShownRecords& records);

Q_SIGNALS:
    void toggled();
    // The user wants to go on in the list.
    void leftForList();
    // The bar has the focus and is about to be closed.
    void closing();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void addLists();
    void addNotice();
    void setMargins();
    void showState();
    void showChips();
    void makeChips();
    void moveToChip(int step);
    void showYears();
    void showNotice();
    QString noticeText() const;
    void choose(int chip);
    bool fieldKey(int key);
    bool chipKey(int key);

    ShownRecords& m_records;
    FlowLayout* m_flow;
    SearchLine* m_words;
    QList<PillButton*> m_chips; // the first stands for all kinds
    std::vector<RecordTypeNumber> m_kinds; // of the other chips
    QComboBox* m_year = nullptr;
    std::vector<int> m_years; // in its list
    QComboBox* m_order = nullptr;
    ToneLabel* m_notice = nullptr;
    PillButton* m_showAll = nullptr;
    bool m_hiddenSaved = false; // the filter hides the record that was saved last
    QTimer m_pause; // until the result is spoken
};

}
