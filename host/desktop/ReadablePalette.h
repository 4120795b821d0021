#pragma once

#include <QObject>
#include <QPalette>

namespace health {

// The palette with hints and selected texts that can be read: usual palettes draw both too faint. All else stays.
QPalette readable(QPalette palette);

// Keeps the application's palette readable, also when the desktop's changes.
class ReadablePalette : public QObject {
public:
    explicit ReadablePalette(QObject* parent);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void apply();
};

}
