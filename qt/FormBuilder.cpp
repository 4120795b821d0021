#include "qt/FormBuilder.h"

#include "platform/controls/ControlVisitor.h"
#include "qt/ChoiceViews.h"
#include "qt/ComboBoxView.h"
#include "qt/ControlViews.h"
#include "qt/DateView.h"
#include "qt/FieldViews.h"
#include "qt/GridView.h"
#include "qt/NoteLabel.h"
#include "qt/TextViews.h"
#include "qt/ViewDesktop.h"

#include <QBoxLayout>
#include <QGridLayout>

#include <algorithm>
#include <stdexcept>

namespace health {

using namespace Qt::StringLiterals;

namespace {

constexpr int NameCharacters = 40;

// Creates the widget of a control.
class ViewMaker final : public ControlVisitor {
public:
    ViewMaker(Form& form, ViewDesktop& desktop, QHash<const Control*, ButtonView*>& buttons)
        : m_form(form)
        , m_desktop(desktop)
        , m_buttons(buttons)
    {
    }

    QWidget* make(Control& control)
    {
        control.accept(*this);
        return m_view;
    }

    void visit(Button& button) override
    {
        auto* const view = new ButtonView(button, nullptr);
        // "..." beside a field needs only the width of its text.
        if (button.caption() == L"...")
            view->setFixedWidth(view->fontMetrics().horizontalAdvance(u"..."_s) * 3);
        view->setPress([&form = m_form, &button] { form.press(button); });
        m_buttons.insert(&button, view);
        m_view = view;
    }
    void visit(CheckBox& checkBox) override { m_view = new CheckBoxView(checkBox); }
    void visit(CheckList& list) override { m_view = new CheckListView(list); }
    void visit(ComboBox& comboBox) override { m_view = new ComboBoxView(comboBox, nullptr); }
    void visit(Grid& grid) override { m_view = new GridView(grid, m_desktop, {}, nullptr); }
    void visit(Image& image) override { m_view = new ImageView(image, nullptr); }
    void visit(Label& label) override { m_view = new LabelView(label); }
    void visit(Menu&) override { refuseMenu(); }
    void visit(MenuItem&) override { refuseMenu(); }
    void visit(OptionButton& option) override { m_view = new OptionButtonView(option); }
    void visit(TextBox& textBox) override
    {
        if (textBox.lines() == TextBox::Lines::Several)
            m_view = new TextAreaView(textBox);
        else
            m_view = new TextBoxView(textBox);
    }
    void visit(UpDown& upDown) override { m_view = new UpDownView(upDown); }
    void visit(mevContainer& container) override { m_view = new FrameView(container); }
    void visit(mevZvDate& date) override { m_view = new DateView(date, m_desktop); }

private:
    [[noreturn]] static void refuseMenu() { throw std::logic_error("A form's arrangement cannot contain a menu."); }

    Form& m_form;
    ViewDesktop& m_desktop;
    QHash<const Control*, ButtonView*>& m_buttons;
    QWidget* m_view = nullptr;
};

QWidget* separator()
{
    auto* const line = new QFrame;
    line->setFrameShape(QFrame::HLine);
    line->setFrameShadow(QFrame::Sunken);
    return line;
}

QLayout* wrapped(QWidget* widget)
{
    auto* const box = new QHBoxLayout;
    box->addWidget(widget);
    return box;
}

}

QLayout* FormBuilder::build(const Arrangement& arrangement)
{
    switch (arrangement.kind) {
    case Arrangement::Kind::Column:
        return buildBox(arrangement, Qt::Vertical);
    case Arrangement::Kind::Row:
        return buildBox(arrangement, Qt::Horizontal);
    case Arrangement::Kind::Grid:
        return buildFields(arrangement);
    case Arrangement::Kind::Buttons:
        return buildButtons(arrangement);
    case Arrangement::Kind::Field:
        return buildField(arrangement);
    case Arrangement::Kind::Frame:
        return wrapped(buildFrame(arrangement));
    case Arrangement::Kind::Single:
        return wrapped(widgetFor(*arrangement.control));
    case Arrangement::Kind::Line:
        return wrapped(separator());
    case Arrangement::Kind::Nothing:
        break;
    }
    return new QVBoxLayout;
}

QLayout* FormBuilder::buildBox(const Arrangement& box, Qt::Orientation orientation)
{
    auto* const layout =
        new QBoxLayout(orientation == Qt::Vertical ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
    LabelView* waiting = nullptr; // a label with an access key belongs to the next control
    const OptionButtonView* option = nullptr; // names the text box beside it
    for (const Arrangement& child : box.children) {
        layout->addLayout(build(child));
        QWidget* const widget = m_widgets.value(child.control);
        if (waiting && widget) {
            waiting->setBuddy(widget);
            waiting->speakFor({ widget });
        }
        if (option && dynamic_cast<TextBoxView*>(widget) && orientation == Qt::Horizontal)
            nameControl(*widget, option->text());
        option = dynamic_cast<OptionButtonView*>(widget);
        auto* const label = dynamic_cast<LabelView*>(widget);
        waiting = label && label->text().contains(u'&') ? label : nullptr;
    }
    return layout;
}

QWidget* FormBuilder::labelFor(const Arrangement& field)
{
    auto* const label = new LabelView(*field.label);
    QList<QWidget*> controls;
    for (const Arrangement& child : field.children)
        controls.append(m_widgets.value(child.control));
    const auto takesFocus = [](const QWidget* widget) { return widget->focusPolicy() != Qt::NoFocus; };
    label->setBuddy(*std::find_if(controls.begin(), controls.end() - 1, takesFocus));
    label->speakFor(controls);
    return label;
}

QLayout* FormBuilder::buildField(const Arrangement& field)
{
    auto* const layout = new QHBoxLayout;
    auto* const controls = new QHBoxLayout;
    for (const Arrangement& child : field.children) {
        QWidget* const widget = widgetFor(*child.control);
        controls->addWidget(widget);
        if (dynamic_cast<UpDownView*>(widget))
            controls->setSpacing(1); // the arrows belong to the box before them
    }
    layout->addWidget(labelFor(field));
    layout->addLayout(controls);
    return layout;
}

// A field with a lookup shows names of people and places.
void FormBuilder::widenForNames(const Arrangement& field)
{
    QWidget* const text = m_widgets.value(field.children.front().control);
    if (field.children.size() > 1 && m_form.hasLookup(field.children.front().control))
        text->setMinimumWidth(text->fontMetrics().averageCharWidth() * NameCharacters);
}

QLayout* FormBuilder::buildFields(const Arrangement& grid)
{
    auto* const layout = new QGridLayout;
    for (const Arrangement& field : grid.children) {
        const int row = layout->rowCount(); // the next row is for a note
        auto* const controls = new QHBoxLayout;
        for (const Arrangement& child : field.children)
            controls->addWidget(widgetFor(*child.control));
        widenForNames(field);
        // The label of a tall field aligns with its first line.
        const bool tall = dynamic_cast<TextAreaView*>(m_widgets.value(field.children.front().control));
        layout->addWidget(labelFor(field), row, 0, tall ? Qt::AlignTop : Qt::Alignment());
        QWidget* const first = m_widgets.value(field.children.front().control);
        // Fields of fixed width align to the left.
        if (first->sizePolicy().horizontalPolicy() == QSizePolicy::Fixed)
            controls->addStretch();
        layout->addLayout(controls, row, 1);
        if (m_form.hasLookup(field.children.front().control) || dynamic_cast<DateView*>(first))
            layout->addWidget(new NoteLabel(*first), row + 1, 1);
    }
    layout->setColumnStretch(1, 1);
    return layout;
}

QLayout* FormBuilder::buildButtons(const Arrangement& row)
{
    auto* const layout = new QHBoxLayout;
    layout->addStretch();
    for (const Arrangement& child : row.children)
        layout->addWidget(widgetFor(*child.control));
    return layout;
}

QWidget* FormBuilder::buildFrame(const Arrangement& frame)
{
    QWidget* const view = ViewMaker(m_form, m_desktop, m_buttons).make(*frame.control);
    auto* const layout = new QVBoxLayout(view);
    layout->addLayout(build(frame.children.front()));
    // Keeps the rows together at the top beside a taller neighbour; a grid fills the space itself.
    if (!view->findChild<QTableView*>())
        layout->addStretch();
    return view;
}

QWidget* FormBuilder::widgetFor(Control& control)
{
    QWidget* const widget = ViewMaker(m_form, m_desktop, m_buttons).make(control);
    m_widgets.insert(&control, widget);
    if (widget->focusPolicy() != Qt::NoFocus || widget->focusProxy())
        m_inOrder.append(widget);
    return widget;
}

}
