#pragma once

#include "platform/controls/ControlVisitor.h"

namespace health {

// Visits the controls that hold a user's entry and passes over all others.
class FieldVisitor : public ControlVisitor {
public:
    using ControlVisitor::visit;

    void visit(Button&) final { }
    void visit(Grid&) final { }
    void visit(Image&) final { }
    void visit(Label&) final { }
    void visit(Menu&) final { }
    void visit(MenuItem&) final { }
    void visit(UpDown&) final { } // repeats the number of the text box beside it
    void visit(mevContainer&) final { }

protected:
    ~FieldVisitor() = default;
};

}
