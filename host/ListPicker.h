#pragma once

#include <QDialog>
#include <QLineEdit>
#include <QTableWidget>
#include <QTimer>

#include <functional>

class QLabel;
class QPushButton;

namespace health {

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
    // Gives the rows for a search text; may throw Failure.
    using Search = std::function<QList<Row>(const QString& text)>;

    ListPicker(const QString& title, const QStringList& headings, QWidget* parent);

    void setRows(const QList<Row>& rows);
    // Puts a search field on top and searches as the user types. `hint` stands in the empty field.
    void setSearch(const QString& hint, Search search);

    // The key of the picked row; empty after Cancel.
    QString pick();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void runSearch();
    void updateButtons();

    QLineEdit* m_text;
    QTableWidget* m_list;
    QLabel* m_remark;
    QPushButton* m_select;
    QTimer m_pause;
    Search m_search;
    QStringList m_keys;
};

}
