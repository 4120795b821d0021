#include "qt/FormBuilder.h"

#include "platform/controls/Grid.h"
#include "qt/ArrangementKinds.h"
#include "qt/ChoiceViews.h"
#include "qt/ControlViews.h"
#include "qt/FieldViews.h"
#include "qt/TextViews.h"
#include "qt/ToneLabel.h"
#include "toolkit/Hairline.h"

#include <QBoxLayout>
#include <QGridLayout>
#include <QTableView>

#include <algorithm>

namespace health {

namespace {

using Kind = Arrangement::Kind;

}

FormBuilder::Parts FormBuilder::build(const Arrangement& arrangement)
{
    Parts parts;
    takeAxis();
    const bool endsInButtons = arrangement.kind == Kind::Column && !arrangement.children.empty()
        && arrangement.children.back().kind == Kind::Buttons;
    if (endsInButtons) {
        const std::vector<Arrangement> body(arrangement.children.begin(), arrangement.children.end() - 1);
        QVBoxLayout* const column = buildColumn(body);
        if (std::ranges::none_of(body, controlOf<Grid>))
            column->addStretch(1); // the fields stay together in a higher window
        parts.body = column;
        parts.buttons = buildButtons(arrangement.children.back());
    } else {
        parts.body = buildPart(arrangement);
    }
    alignCaptions();
    return parts;
}

void FormBuilder::alignCaptions()
{
    for (const auto& axis : m_axes)
        axis->settle();
}

QLayout* FormBuilder::buildPart(const Arrangement& part)
{
    switch (part.kind) {
    case Kind::Column:
    case Kind::Grid:
        return buildColumn(part.children);
    case Kind::Row:
        return buildRow(part);
    case Kind::Downwards:
        return buildDownwards(part);
    case Kind::Buttons:
        return buildButtons(part);
    case Kind::Field:
        return buildField(part);
    case Kind::Single:
        return buildSingle(part);
    case Kind::Details:
        return buildDetails(part);
    case Kind::Help:
        return buildHelp(part);
    case Kind::OnAxis:
        return buildOnAxis(part);
    case Kind::OwnAxis:
        return buildOnOwnAxis(part);
    default:
        break;
    }
    auto* const layout = bare<QVBoxLayout>();
    if (part.kind == Kind::Frame)
        layout->addWidget(buildFrame(part));
    else if (part.kind == Kind::Line)
        layout->addWidget(new Hairline);
    return layout;
}

// --- Distances ---

int FormBuilder::gapInColumn(const Arrangement& above, const Arrangement& below) const
{
    const auto separates = [](const Arrangement& part) { return part.kind == Kind::Line || part.kind == Kind::Space; };
    if (above.kind == Kind::Space)
        return 0;
    if (separates(above) || separates(below))
        return m_measures.groupGap();
    if ((isOption(above) && isOption(below)) || (above.kind == Kind::Frame && below.kind == Kind::Frame))
        return 0;
    if (above.kind == Kind::Help && below.kind == Kind::Help)
        return m_measures.units(0.5);
    return m_measures.rowGap();
}

int FormBuilder::gapInRow(const Arrangement& left, const Arrangement& right) const
{
    if (isBlock(left) || isBlock(right))
        return m_measures.units(9);
    if (isOption(left))
        return m_measures.units(isOption(right) ? 8 : 3);
    if (left.kind == Kind::Field)
        return m_measures.formMargin();
    if (isEllipsis(right) || controlOf<Label>(right) || (controlOf<Button>(left) && controlOf<Button>(right)))
        return m_measures.ellipsisGap();
    return m_measures.explanationGap();
}

// --- Groups ---

QVBoxLayout* FormBuilder::buildColumn(const std::vector<Arrangement>& children)
{
    auto* const layout = bare<QVBoxLayout>();
    const Arrangement* above = nullptr;
    LabelView* waiting = nullptr; // a label with an access key belongs to the next control
    for (const Arrangement& child : children) {
        if (above)
            layout->addSpacing(gapInColumn(*above, child));
        above = &child;
        if (child.kind == Kind::Space)
            continue;
        layout->addLayout(buildPart(child), controlOf<Grid>(child) ? 1 : 0);
        const Arrangement& first = child.kind == Kind::Row ? child.children.front() : child;
        QWidget* const widget = m_widgets.value(first.control);
        if (waiting && widget) {
            waiting->setBuddy(widget);
            waiting->speakFor({ widget });
        }
        auto* const label = dynamic_cast<LabelView*>(widget);
        waiting = label && label->text().contains(u'&') ? label : nullptr;
    }
    return layout;
}

QLayout* FormBuilder::buildRow(const Arrangement& row)
{
    if (std::ranges::any_of(row.children, isBlock))
        return buildTable(row);
    FieldNotes* const outer = m_sharedNotes;
    FieldNotes& notes = outer ? *outer : newNotes();
    m_sharedNotes = &notes;
    QLayout* const line = buildLine(row);
    m_sharedNotes = outer;
    if (outer)
        return line;
    const bool hasAxis = row.children.front().kind == Kind::Field;
    auto* const layout = bare<QVBoxLayout>();
    layout->addLayout(line);
    if (!hasAxis) {
        layout->addWidget(&notes.below());
        return layout;
    }
    QGridLayout* const below = axisRow(nullptr);
    below->addWidget(&notes.below(), 0, ValueColumn);
    layout->addLayout(below);
    return layout;
}

// Children side by side in one line.
QLayout* FormBuilder::buildLine(const Arrangement& row)
{
    auto* const line = bare<QHBoxLayout>();
    CaptionAxis* const axis = m_axis;
    const Arrangement* left = nullptr;
    const OptionButtonView* option = nullptr; // names the text box beside it
    bool isFull = false;
    for (const Arrangement& child : row.children) {
        if (left)
            line->addSpacing(gapInRow(*left, child));
        if (child.kind == Kind::Beside) {
            addBeside(*line, *child.control);
            isFull = true;
            continue;
        }
        if (child.kind == Kind::Single)
            line->addWidget(widgetFor(child));
        else
            line->addLayout(buildPart(child));
        QWidget* const widget = m_widgets.value(child.control);
        if (child.kind == Kind::Single && takesNotes(*child.control))
            m_sharedNotes->add(*child.control, *widget);
        if (option && dynamic_cast<TextBoxView*>(widget))
            nameControl(*widget, option->text());
        option = dynamic_cast<OptionButtonView*>(widget);
        left = &child;
        takeAxis();
    }
    m_axis = axis;
    if (!isFull) {
        line->addSpacing(m_measures.explanationGap());
        line->addWidget(&m_sharedNotes->beside(), 1);
        line->addStretch();
    }
    return line;
}

// What the form says about a control, at the right edge.
void FormBuilder::addBeside(QBoxLayout& line, Control& control)
{
    FieldNotes& notes = newNotes();
    notes.add(control, *m_widgets.value(&control));
    line.addStretch();
    line.addWidget(&notes.beside());
    line.addWidget(&notes.below());
}

// Blocks side by side. Columns of several blocks share their rows.
QLayout* FormBuilder::buildTable(const Arrangement& row)
{
    auto* const table = bare<QGridLayout>();
    CaptionAxis* const axis = m_axis;
    std::size_t rows = 1;
    for (const Arrangement& child : row.children)
        rows = std::max(rows, child.kind == Kind::Column ? child.children.size() : 1);
    int at = 0;
    std::size_t firstNotes = m_notes.size();
    const std::size_t notesBefore = firstNotes;
    for (const Arrangement& child : row.children) {
        if (at > 0)
            table->setColumnMinimumWidth(at++, gapInRow(child, child));
        const std::size_t ownNotes = m_notes.size();
        if (child.kind == Kind::Column && child.children.size() == rows) {
            for (std::size_t i = 0; i < rows; ++i)
                table->addLayout(buildPart(child.children[i]), static_cast<int>(i), at);
        } else {
            table->addLayout(buildPart(child), 0, at, static_cast<int>(rows), 1);
        }
        // Rows of fields side by side keep the same height.
        for (std::size_t i = 0; at > 0 && i < m_notes.size() - ownNotes && notesBefore + i < ownNotes; ++i)
            FieldNotes::pair(*m_notes[notesBefore + i], *m_notes[ownNotes + i]);
        ++at;
        takeAxis();
    }
    m_axis = axis;
    table->setColumnStretch(at, 1);
    return table;
}

QLayout* FormBuilder::buildDownwards(const Arrangement& part)
{
    auto* const table = bare<QGridLayout>();
    const int rows = (static_cast<int>(part.children.size()) + 1) / 2;
    for (int i = 0; i < static_cast<int>(part.children.size()); ++i)
        table->addLayout(buildPart(part.children[static_cast<std::size_t>(i)]), i % rows, i / rows * 2);
    table->setColumnMinimumWidth(1, m_measures.units(9));
    table->setColumnStretch(2, 1);
    return table;
}

QLayout* FormBuilder::buildButtons(const Arrangement& row)
{
    auto* const layout = bare<QHBoxLayout>();
    layout->setSpacing(m_measures.explanationGap());
    const auto isStretch = [](const Arrangement& child) { return child.kind == Kind::Stretch; };
    if (std::ranges::none_of(row.children, isStretch))
        layout->addStretch();
    ButtonView* before = nullptr; // the button before Cancel saves
    for (const Arrangement& child : row.children) {
        if (isStretch(child)) {
            layout->addStretch();
            continue;
        }
        if (before && child.control == m_form.cancelButton())
            before->setFilled(true);
        QWidget* const widget = widgetFor(child);
        layout->addWidget(widget);
        before = dynamic_cast<ButtonView*>(widget);
    }
    return layout;
}

QWidget* FormBuilder::buildFrame(const Arrangement& frame)
{
    QWidget* const view = m_maker.make(*frame.control);
    auto* const headed = dynamic_cast<FrameView*>(view);
    m_frames.insert(frame.control, headed);
    auto* const layout = bare<QVBoxLayout>();
    view->setLayout(layout);
    const Arrangement& child = frame.children.front();
    const bool startsWithOption = isOption(child) || (child.kind == Kind::Column && isOption(child.children.front()));
    if (headed && !headed->title().isEmpty() && !startsWithOption)
        layout->addSpacing(m_measures.units(0.5));
    layout->addLayout(buildPart(child));
    // Keeps the rows together at the top beside a taller neighbour; a grid fills the space itself.
    if (!view->findChild<QTableView*>())
        layout->addStretch();
    return view;
}

}
