#pragma once

#include <QWidget>

namespace health {

// A widget with several parts; it derives their spoken names from its own.
class SpokenParts {
public:
    virtual void setSpokenName(const QString& name) = 0;

protected:
    ~SpokenParts() = default;
};

// Sets the caption beside a widget as the name that a screen reader speaks. A button keeps its own caption, unless that
// is "...", which becomes "Find" and the name.
void nameControl(QWidget& widget, QString caption);

}
