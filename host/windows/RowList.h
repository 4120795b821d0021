#pragma once

#include "toolkit/FocusFrame.h"

#include <QTableWidget>

namespace health {

// A list of rows, of which one is selected. A row has a hidden key and a text for each column. A heading is a row that
// cannot be selected.
class RowList : public FocusFramed<QTableWidget> {
    Q_OBJECT
public:
    struct Row {
        QString key;
        QStringList texts;
        bool isHeading = false;
    };

    static Row heading(const QString& text) { return { {}, { text }, true }; }

    explicit RowList(const QStringList& headings);

    // Sets the width of a column in letters. The last column takes the remaining width as well.
    void setColumn(int column, int letters, Qt::Alignment alignment = Qt::AlignLeft);
    // Shows the rows and selects the first that can be.
    void setRows(const QList<Row>& rows);
    // The rows that can be selected.
    int selectableRows() const;

    // Empty without a selected row.
    QString selectedKey() const { return m_keys.value(currentRow()); }
    // Selects the first row with this key, if any.
    void selectKey(const QString& key);
    void selectFirst();
    void selectLast();
    // Home and End go to the first and the last row; true if it was one of these keys.
    bool moveToEnd(const QKeyEvent& key);

    // Draws the frame of the selected row as if the list had the focus: another widget controls the list.
    void setLed(bool led) { m_led = led; }

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void addRow(int row, const Row& content);
    void addHeading(int row, const QString& text);
    void layOut();

    QStringList m_keys;
    QList<int> m_letters; // the widths of the columns
    bool m_led = false;
};

}
