#pragma once

#include "platform/controls/ComboBox.h"
#include "qt/Mirror.h"
#include "qt/SpokenName.h"

#include <QComboBox>

namespace health {

class FieldButton;

// Mirrors a drop-down list. The mouse wheel changes it only while it has the focus (see WheelGuard).
class ComboBoxView : public Mirror<QComboBox, ComboBox>, public SpokenParts {
public:
    ComboBoxView(ComboBox& comboBox, QWidget* parent);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    void setSpokenName(const QString& name) override;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void mirror(Change change) override;
    void mirrorItems();
    void mirrorChoice();
    void choose(int index);
    void makeClearButton();
    void describe();

    FieldButton* m_clear = nullptr; // in an emptiable list
    bool m_isNamed = false; // a caption stands beside the list
};

}
