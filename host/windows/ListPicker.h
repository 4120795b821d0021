#pragma once

#include <QDialog>
#include <QLineEdit>
#include <QTableWidget>
#include <QTimer>

#include <functional>
#include <optional>

class QLabel;
class QPushButton;

namespace health {

// Gives a window its size, but never more than the screen has.
void resizeToScreen(QWidget& window, QSize size);

// A dialog that lists rows of texts and lets the user pick one; on demand with a search field that
// keeps the focus while the arrow keys move through the list.
class ListPicker : public QDialog {
    Q_OBJECT
public:
    // Each row: a key that is not shown, then its texts, by heading.
    struct Row {
        QString key;
        QStringList texts;
    };
    // Gives the rows for a search text; empty when the search cannot be made just now and is wanted again. May throw
    // Failure.
    using Search = std::function<std::optional<QList<Row>>(const QString& text)>;

    ListPicker(const QString& title, const QStringList& headings, QWidget* parent);

    // Gives a column a width of so many letters, whatever it shows; the last one takes what is left besides.
    void setColumn(int column, int letters, Qt::Alignment alignment = Qt::AlignLeft);
    // Shows the rows and selects the first.
    void setRows(const QList<Row>& rows);
    // Selects the row with a key, if there is one.
    void selectKey(const QString& key);
    // Puts a search field on top and searches as the user types, without the blanks around it. `hint` stands in the
    // empty field.
    void setSearch(const QString& hint, Search search);

    // The key of the picked row; empty after Cancel.
    QString pick();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void runSearch();
    bool pressedEnter();
    bool moveToEnd(const QKeyEvent& key);
    void layOutColumns();
    void updateButtons();

    QLineEdit* m_text;
    QTableWidget* m_list;
    QLabel* m_remark;
    QPushButton* m_select;
    QTimer m_pause;
    Search m_search;
    QStringList m_keys;
    QList<int> m_letters; // widths of the columns
};

}
