#pragma once

#include "records/RecordFields.h"
#include "toolkit/FocusFrame.h"

#include <QTableView>

namespace health {

// A record's fields one per line: caption, value, and what the record before had. A table for screen readers.
class FieldList : public FocusFramed<QTableView> {
public:
    explicit FieldList(QWidget* parent);

    void setFields(const std::vector<RecordField>& fields);
    // Without wrapping.
    int naturalWidth() const;
    // Wraps the values in a width and returns the height of all lines.
    int fitTo(int width);
    // All lines, or the selected ones: "Severity: Mild Intermittent (was Mild Persistent)".
    QString text(bool all) const;

protected:
    void changeEvent(QEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QString line(int row) const;
    void copy() const;
    void applyPalette();
};

}
