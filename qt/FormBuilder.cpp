#include "qt/FormBuilder.h"

#include "qt/ChoiceViews.h"
#include "qt/ComboBoxView.h"
#include "qt/ControlViews.h"
#include "qt/DateView.h"
#include "qt/FieldViews.h"
#include "qt/GridView.h"
#include "qt/NoteLabel.h"
#include "qt/QtDesktop.h"
#include "qt/TextViews.h"
#include "toolkit/QtText.h"

#include <QBoxLayout>
#include <QGridLayout>

#include <algorithm>

namespace health {

namespace {

constexpr int NameCharacters = 40;

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
    LabelView* waiting = nullptr; // a label with an access key stands for the control that follows it
    const OptionButtonView* option = nullptr; // the text beside an option goes with it
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

// A field with a lookup shows names.
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
        const int row = layout->rowCount(); // the one below is for a note
        auto* const controls = new QHBoxLayout;
        for (const Arrangement& child : field.children)
            controls->addWidget(widgetFor(*child.control));
        widenForNames(field);
        // Beside several lines the label stands at the first one.
        const bool tall = dynamic_cast<TextAreaView*>(m_widgets.value(field.children.front().control));
        layout->addWidget(labelFor(field), row, 0, tall ? Qt::AlignTop : Qt::Alignment());
        QWidget* const first = m_widgets.value(field.children.front().control);
        // Fields as wide as their values stand at the left.
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
    auto* const view = new FrameView(*static_cast<mevContainer*>(frame.control));
    auto* const layout = new QVBoxLayout(view);
    layout->addLayout(build(frame.children.front()));
    // Rows keep together at the top where a neighbour is taller; a grid takes the room itself.
    if (!view->findChild<QTableView*>())
        layout->addStretch();
    return view;
}

QWidget* FormBuilder::widgetFor(Control& control)
{
    QWidget* const widget = makeWidget(control);
    m_widgets.insert(&control, widget);
    if (widget->focusPolicy() != Qt::NoFocus || widget->focusProxy())
        m_inOrder.append(widget);
    return widget;
}

QWidget* FormBuilder::makeWidget(Control& control)
{
    if (auto* const button = dynamic_cast<Button*>(&control)) {
        auto* const view = new ButtonView(*button, nullptr);
        // "..." beside a field needs no more than its text.
        if (button->caption() == L"...")
            view->setFixedWidth(view->fontMetrics().horizontalAdvance(QStringLiteral("...")) * 3);
        return view;
    }
    if (auto* const textBox = dynamic_cast<TextBox*>(&control))
        return textBox->lines() == TextBox::Lines::Several ? static_cast<QWidget*>(new TextAreaView(*textBox))
                                                           : new TextBoxView(*textBox);
    if (auto* const comboBox = dynamic_cast<ComboBox*>(&control))
        return new ComboBoxView(*comboBox, nullptr);
    if (auto* const date = dynamic_cast<mevZvDate*>(&control))
        return new DateView(*date, m_desktop);
    if (auto* const checkBox = dynamic_cast<CheckBox*>(&control))
        return new CheckBoxView(*checkBox);
    if (auto* const option = dynamic_cast<OptionButton*>(&control))
        return new OptionButtonView(*option);
    if (auto* const list = dynamic_cast<CheckList*>(&control))
        return new CheckListView(*list);
    if (auto* const upDown = dynamic_cast<UpDown*>(&control))
        return new UpDownView(*upDown);
    if (auto* const grid = dynamic_cast<Grid*>(&control))
        return new GridView(*grid, m_desktop, {}, nullptr);
    if (auto* const label = dynamic_cast<Label*>(&control))
        return new LabelView(*label);
    return new QWidget;
}

}
