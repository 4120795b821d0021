#pragma once

#include "platform/Form.h"
#include "platform/controls/ControlVisitor.h"

#include <QHash>
#include <QWidget>

namespace health {

class ButtonView;
class ViewDesktop;

// Creates the widgets of a form's controls. Throws std::logic_error for a menu, which has no place in a form.
class ViewMaker final : public ControlVisitor {
public:
    ViewMaker(Form& form, ViewDesktop& desktop)
        : m_form(form)
        , m_desktop(desktop)
    {
    }

    QWidget* make(Control& control);

    // The widgets of the buttons made so far.
    const QHash<const Control*, ButtonView*>& buttons() const { return m_buttons; }

private:
    void visit(Button& button) override;
    void visit(CheckBox& checkBox) override;
    void visit(CheckList& list) override;
    void visit(ComboBox& comboBox) override;
    void visit(Grid& grid) override;
    void visit(Image& image) override;
    void visit(Label& label) override;
    void visit(Menu& menu) override;
    void visit(MenuItem& item) override;
    void visit(OptionButton& option) override;
    void visit(TextBox& textBox) override;
    void visit(UpDown& upDown) override;
    void visit(mevContainer& container) override;
    void visit(mevZvDate& date) override;

    Form& m_form;
    ViewDesktop& m_desktop;
    QHash<const Control*, ButtonView*> m_buttons;
    QWidget* m_view = nullptr;
};

}
