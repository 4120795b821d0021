#pragma once

#include <QObject>
#include <QPalette>

namespace health {

// The palette with readable colours for hints, selected text and disabled fields, which most palettes draw too faint.
QPalette readable(QPalette palette);

// Keeps the application's palette readable, also after the desktop's palette changes.
class ReadablePalette : public QObject {
public:
    explicit ReadablePalette(QObject* parent);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void apply();
};

}
