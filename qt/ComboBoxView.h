#pragma once

#include "platform/ComboBox.h"
#include "qt/Mirror.h"

#include <QComboBox>

namespace health {

// Mirrors a drop-down list. The mouse wheel changes it only while it has the focus: a wheel turned on the way
// past would change a clinical value unseen.
class ComboBoxView : public Mirror<QComboBox, ComboBox> {
public:
    ComboBoxView(ComboBox& comboBox, QWidget* parent);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    void mirror(Change change) override;
    void mirrorItems();
};

}
