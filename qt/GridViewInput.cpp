// What the user does in a grid: menus, keys, the mouse.
#include "qt/GridModel.h"
#include "qt/GridView.h"
#include "qt/ViewDesktop.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QScopedValueRollback>

namespace health {

using namespace Qt::StringLiterals;

void GridView::contextMenuEvent(QContextMenuEvent* event)
{
    if (event->reason() == QContextMenuEvent::Keyboard) {
        openMenuByKey();
        return;
    }
    m_desktop.setPopUpPlace(event->globalPos());
    offerEntries();
    m_control.releaseMouse(MouseButton::Right, m_model->gridRow(rowAt(event->pos().y())));
}

// The menu key opens the menu beside the selected row.
void GridView::openMenuByKey()
{
    const int row = selectedRow();
    const int below = row == -1 ? 0 : rowViewportPosition(row) + rowHeight(row);
    m_desktop.setPopUpPlace(viewport()->mapToGlobal(QPoint(columnViewportPosition(m_model->columnCount() - 1), below)));
    offerEntries();
    m_control.releaseMouse(MouseButton::Right, m_model->gridRow(row));
}

// Copies the row that is selected when the menu opens: a right click selects the row under it first.
void GridView::offerEntries()
{
    m_desktop.offerWithNextMenu(
        u"&Copy"_s, [this] { copyRow(); }, [this] { return selectedRow() != -1; });
}

// The shown texts, separated by tabs.
void GridView::copyRow()
{
    const int row = selectedRow();
    if (row == -1)
        return;
    QStringList texts;
    for (int column = 0; column < m_model->columnCount(); ++column)
        texts.append(m_model->index(row, column).data().toString());
    QApplication::clipboard()->setText(texts.join(u'\t'));
}

void GridView::keyPressEvent(QKeyEvent* event)
{
    const int key = event->key();
    const bool enter = key == Qt::Key_Return || key == Qt::Key_Enter;
    if (key == Qt::Key_Menu || (key == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier)) {
        openMenuByKey();
    } else if (event->matches(QKeySequence::Copy)) {
        copyRow();
    } else if ((key == Qt::Key_Home || key == Qt::Key_End) && !(event->modifiers() & ~Qt::ControlModifier)) {
        const int last = m_model->rowCount() - 1;
        if (last >= 0)
            setCurrentIndex(m_model->index(key == Qt::Key_Home ? 0 : last, 0));
    } else if (!enter || selectedRow() == -1) {
        QTableView::keyPressEvent(event);
        // The current row may be unselected: a key that cannot leave it selects it.
        if ((key == Qt::Key_Space || key == Qt::Key_Up || key == Qt::Key_Down) && selectedRow() == -1
            && currentIndex().isValid())
            m_control.choose(m_model->gridRow(currentIndex().row()));
    } else if (!event->isAutoRepeat()) { // a key held down would also press the opened form's default button
        m_control.doubleClick(m_control.row());
    }
}

void GridView::mousePressEvent(QMouseEvent* event)
{
    QTableView::mousePressEvent(event);
    // The current row may have been unselected: then the press selects it, but the current row stays the same.
    if (selectedRow() == -1 && selectionModel()->hasSelection())
        m_control.choose(m_model->gridRow(currentIndex().row()));
}

void GridView::mouseMoveEvent(QMouseEvent* event)
{
    const QModelIndex index = indexAt(event->position().toPoint());
    m_control.moveMouse(m_model->gridRow(index.row()), index.isValid() ? m_model->gridColumn(index.column()) : -1);
    QTableView::mouseMoveEvent(event);
}

void GridView::leaveEvent(QEvent* event)
{
    m_control.moveMouse(-1, -1);
    QTableView::leaveEvent(event);
}

// Unlike Qt's table, does not select a row on focus; an arrow key does.
void GridView::focusInEvent(QFocusEvent* event)
{
    const QScopedValueRollback guard(m_mirroring, true);
    const bool hadCurrent = currentIndex().isValid();
    QTableView::focusInEvent(event);
    if (m_control.row() == -1 && !hadCurrent)
        mirrorSelection();
}

// Ctrl+click and clicks beside the rows keep the selection, because the commands act on the selected row.
QItemSelectionModel::SelectionFlags GridView::selectionCommand(const QModelIndex& index, const QEvent* event) const
{
    return !index.isValid() || QTableView::selectionCommand(index, event) == QItemSelectionModel::NoUpdate
        ? QItemSelectionModel::NoUpdate
        : QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows;
}

void GridView::mouseDoubleClickEvent(QMouseEvent* event)
{
    QTableView::mouseDoubleClickEvent(event);
    const int row = rowAt(event->position().toPoint().y());
    if (event->button() == Qt::LeftButton && row != -1)
        m_control.doubleClick(m_model->gridRow(row));
}

}
