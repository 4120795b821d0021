#pragma once

namespace health {

class Button;
class CheckBox;
class CheckList;
class ComboBox;
class Grid;
class Image;
class Label;
class Menu;
class MenuItem;
class OptionButton;
class TextBox;
class UpDown;
class mevContainer;
class mevZvDate;

// One operation for each kind of control, called by Control::accept. A new kind of control gets its operation here;
// the compiler then points to every visitor that lacks it.
class ControlVisitor {
public:
    virtual void visit(Button& button) = 0;
    virtual void visit(CheckBox& checkBox) = 0;
    virtual void visit(CheckList& list) = 0;
    virtual void visit(ComboBox& comboBox) = 0;
    virtual void visit(Grid& grid) = 0;
    virtual void visit(Image& image) = 0;
    virtual void visit(Label& label) = 0;
    virtual void visit(Menu& menu) = 0;
    virtual void visit(MenuItem& item) = 0;
    virtual void visit(OptionButton& option) = 0;
    virtual void visit(TextBox& textBox) = 0;
    virtual void visit(UpDown& upDown) = 0;
    virtual void visit(mevContainer& container) = 0;
    virtual void visit(mevZvDate& date) = 0;

protected:
    ~ControlVisitor() = default;
};

}
