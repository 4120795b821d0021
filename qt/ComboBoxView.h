#pragma once

#include "platform/ComboBox.h"

#include <QComboBox>

namespace health {

// Mirrors a drop-down list. The mouse wheel changes it only while it has the focus: a wheel turned on the way
// past would change a clinical value unseen.
class ComboBoxView : public QComboBox, public ControlObserver {
public:
    ComboBoxView(ComboBox& comboBox, QWidget* parent);
    ~ComboBoxView() override;

    void controlChanged(Control& control, Change change) override;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    void mirrorItems();

    ComboBox& m_comboBox;
};

}
