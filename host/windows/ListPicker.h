#pragma once

#include "host/windows/RowList.h"

#include <QDialog>
#include <QLineEdit>
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
    using Row = RowList::Row;
    // Returns the rows for a search text; empty if the search is impossible now and must be retried. May throw Failure.
    using Search = std::function<std::optional<QList<Row>>(const QString& text)>;

    ListPicker(const QString& title, const QStringList& headings, QWidget* parent);

    RowList& list() { return *m_list; }
    // Adds a search field on top and searches for the trimmed text as the user types. `hint` is shown in the empty
    // field.
    void setSearch(const QString& hint, Search search);

    // Runs the dialog. The key of the picked row; empty after Cancel.
    QString pick();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void runSearch();
    bool pressedEnter();
    void updateButtons();

    QLineEdit* m_text;
    RowList* m_list;
    QLabel* m_remark;
    QPushButton* m_select;
    QTimer m_pause;
    Search m_search;
};

}
