#pragma once

#include "platform/controls/Grid.h"
#include "qt/Mirror.h"
#include "qt/RowFlash.h"
#include "toolkit/FocusFrame.h"

#include <QTableView>

#include <optional>

namespace health {

class GridModel;
class ViewDesktop;

// Mirrors a grid. Only visible rows are measured, so that thousands of wrapped rows cost no more than a screenful.
class GridView : public Mirror<FocusFramed<QTableView>, Grid> {
public:
    // Grid and desktop must outlive the view. `headings`: see GridModel.
    GridView(Grid& grid, ViewDesktop& desktop, QStringList headings, QWidget* parent);
    QSize sizeHint() const override;

    // Paints the selection grey, because the commands act in another panel.
    void setQuiet(bool quiet);

protected:
    void mirror(Change change) override;
    GridModel& gridModel() { return *m_model; }
    void changeEvent(QEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index, const QEvent* event) const override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;

    // Adds the view's entries to the menu that opens next.
    virtual void offerEntries();
    ViewDesktop& desktop() { return m_desktop; }

    // The view's row that is selected; -1 without one, or if the view does not show it.
    int selectedRow() const;
    // A row's place, in coordinates of the viewport.
    virtual QRect placeOfRow(int row) const;
    // Replaces the header beside the rows, which is hidden by default.
    void useRowHeader(QHeaderView& header);
    // The row that becomes the current one, unselected, while no row is selected; -1 for none.
    virtual int restingRow() const { return -1; }
    // The height of a row with one line.
    virtual int heightOfLine() const;
    // The height that a row's text needs.
    virtual int heightOfText(int row);
    void measureRowsInView();

private:
    void scrollToRow(int gridRow);
    void mirrorContents();
    void mirrorColours();
    void mirrorLayout();
    void mirrorSelection();
    void mirrorHint();
    void drawMarkedRows();
    void drawHint();
    void sizeColumns();
    void copyRow();
    bool isCut(const QModelIndex& index) const;
    int hintHeight() const;
    void openMenuByKey();
    int measureRow(int row);

    ViewDesktop& m_desktop;
    GridModel* m_model;
    bool m_mirroring = false; // the program, not the user, is changing the selection
    bool m_measuring = false;
    bool m_coloursChanged = false;
    bool m_quiet = false;
    RowFlash m_flash;
    std::optional<int> m_scrolled; // position of the scroll bar when the grid stopped drawing
};

}
