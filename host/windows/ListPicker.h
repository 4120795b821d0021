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

// Resizes a window, at most to the size of the screen.
void resizeToScreen(QWidget& window, QSize size);

// A dialog in which the user picks one of a list of rows; optionally with a search field that keeps the focus while the
// arrow keys move through the list.
class ListPicker : public QDialog {
    Q_OBJECT
public:
    // A hidden key, and a text for each heading.
    struct Row {
        QString key;
        QStringList texts;
    };
    // Returns the rows for a search text; empty if the search is impossible now and must be retried. May throw Failure.
    using Search = std::function<std::optional<QList<Row>>(const QString& text)>;

    ListPicker(const QString& title, const QStringList& headings, QWidget* parent);

    // Sets the width of a column in letters. The last column takes the remaining width as well.
    void setColumn(int column, int letters, Qt::Alignment alignment = Qt::AlignLeft);
    // Shows the rows and selects the first.
    void setRows(const QList<Row>& rows);
    // Selects the row with this key, if any.
    void selectKey(const QString& key);
    // Adds a search field on top and searches for the trimmed text as the user types. `hint` is shown in the empty
    // field.
    void setSearch(const QString& hint, Search search);

    // Runs the dialog. The key of the picked row; empty after Cancel.
    QString pick();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void setUpList(const QStringList& headings);
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
    QList<int> m_letters; // the widths of the columns
};

}
