#include "qt/ViewMaker.h"

#include "qt/ChoiceViews.h"
#include "qt/ComboBoxView.h"
#include "qt/ControlViews.h"
#include "qt/DateView.h"
#include "qt/FieldViews.h"
#include "qt/GridView.h"
#include "qt/TextViews.h"
#include "qt/ViewDesktop.h"
#include "toolkit/Measures.h"

#include <stdexcept>

namespace health {

using namespace Qt::StringLiterals;

namespace {

[[noreturn]] void refuseMenu() { throw std::logic_error("A form's arrangement cannot contain a menu."); }

}

QWidget* ViewMaker::make(Control& control)
{
    control.accept(*this);
    return m_view;
}

void ViewMaker::visit(Button& button)
{
    auto* const view = new ButtonView(button, nullptr);
    // "..." beside a field needs only the width of its text.
    if (button.caption() == L"...")
        view->setFixedWidth(Measures(*view).ellipsisWidth());
    view->setPress([&form = m_form, &button] { form.press(button); });
    m_buttons.insert(&button, view);
    m_view = view;
}

void ViewMaker::visit(CheckBox& checkBox) { m_view = new CheckBoxView(checkBox); }

void ViewMaker::visit(CheckList& list) { m_view = new CheckListView(list); }

void ViewMaker::visit(ComboBox& comboBox) { m_view = new ComboBoxView(comboBox, nullptr); }

void ViewMaker::visit(Grid& grid) { m_view = new GridView(grid, m_desktop, {}, nullptr); }

void ViewMaker::visit(Image& image) { m_view = new ImageView(image, nullptr); }

void ViewMaker::visit(Label& label) { m_view = new LabelView(label); }

void ViewMaker::visit(Menu&) { refuseMenu(); }

void ViewMaker::visit(MenuItem&) { refuseMenu(); }

void ViewMaker::visit(OptionButton& option) { m_view = new OptionButtonView(option); }

void ViewMaker::visit(TextBox& textBox)
{
    if (textBox.lines() == TextBox::Lines::Several)
        m_view = new TextAreaView(textBox);
    else
        m_view = new TextBoxView(textBox);
}

void ViewMaker::visit(UpDown& upDown) { m_view = new UpDownView(upDown); }

void ViewMaker::visit(mevContainer& container) { m_view = new FrameView(container); }

void ViewMaker::visit(mevZvDate& date) { m_view = new DateView(date, m_desktop); }

}
