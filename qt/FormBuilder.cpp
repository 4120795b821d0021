#include "qt/FormBuilder.h"

#include "qt/ChoiceViews.h"
#include "qt/ComboBoxView.h"
#include "qt/ControlViews.h"
#include "qt/DateView.h"
#include "qt/FieldViews.h"
#include "qt/GridView.h"
#include "qt/Inks.h"
#include "qt/TextViews.h"
#include "qt/ToneLabel.h"
#include "toolkit/QtText.h"

#include <QBoxLayout>
#include <QGridLayout>
#include <QPainter>

#include <algorithm>
#include <utility>

namespace health {

using namespace Qt::StringLiterals;

namespace {

using Kind = Arrangement::Kind;

constexpr int DateExplanation = 32; // characters, such as "Wed Sep 30, 2026 · 10 months ago"
constexpr int NameExplanation = 24;
constexpr int ValueColumn = 2; // of a row at the axis; the gap after the caption is a column too

class Hairline : public QWidget {
public:
    Hairline() { setFixedHeight(Measures(*this).hairline()); }

protected:
    void paintEvent(QPaintEvent*) override { QPainter(this).fillRect(rect(), colourOf(Ink::Hairline, palette())); }
};

template<typename Mirrored>
const Mirrored* controlOf(const Arrangement& part)
{
    return part.kind == Kind::Single ? dynamic_cast<const Mirrored*>(part.control) : nullptr;
}

bool isOption(const Arrangement& part)
{
    if (part.kind == Kind::Row || part.kind == Kind::Downwards)
        return !part.children.empty() && isOption(part.children.front());
    return controlOf<OptionButton>(part);
}

bool isBlock(const Arrangement& part)
{
    return part.kind == Kind::Column || part.kind == Kind::Frame || part.kind == Kind::Grid;
}

bool isEllipsis(const Arrangement& part)
{
    const auto* const button = controlOf<Button>(part);
    return button && button->caption() == L"...";
}

bool takesNotes(const Control& control)
{
    return !dynamic_cast<const Button*>(&control) && !dynamic_cast<const Label*>(&control)
        && !dynamic_cast<const UpDown*>(&control) && !dynamic_cast<const Image*>(&control);
}

bool takesFocus(const QWidget* widget) { return widget->focusPolicy() != Qt::NoFocus; }

bool isTall(const QWidget* widget)
{
    return dynamic_cast<const TextAreaView*>(widget) || dynamic_cast<const CheckListView*>(widget);
}

template<typename Layout>
Layout* bare()
{
    auto* const layout = new Layout;
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    return layout;
}

}

QWidget* newHairline() { return new Hairline; }

FormBuilder::Parts FormBuilder::build(const Arrangement& arrangement)
{
    Parts parts;
    takeAxis();
    const bool endsInButtons = arrangement.kind == Kind::Column && !arrangement.children.empty()
        && arrangement.children.back().kind == Kind::Buttons;
    if (endsInButtons) {
        const std::vector<Arrangement> body(arrangement.children.begin(), arrangement.children.end() - 1);
        parts.body = buildColumn(body);
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
        layout->addWidget(newHairline());
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
    if (controlOf<UpDown>(right))
        return 1; // the arrows belong to the field before them
    if (isEllipsis(right) || controlOf<Label>(right) || (controlOf<Button>(left) && controlOf<Button>(right)))
        return m_measures.ellipsisGap();
    return m_measures.explanationGap();
}

// --- Groups ---

QLayout* FormBuilder::buildColumn(const std::vector<Arrangement>& children)
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
            FieldNotes& notes = newNotes();
            notes.add(*child.control, *m_widgets.value(child.control));
            line->addStretch();
            line->addWidget(&notes.beside());
            line->addWidget(&notes.below());
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
    for (const Arrangement& child : row.children) {
        if (isStretch(child))
            layout->addStretch();
        else
            layout->addWidget(widgetFor(child));
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

// --- Fields ---

QLayout* FormBuilder::buildField(const Arrangement& field)
{
    const bool sharesNotes = m_sharedNotes;
    FieldNotes& notes = sharesNotes ? *m_sharedNotes : newNotes();
    auto* const line = bare<QHBoxLayout>();
    addControls(*line, field, notes);
    QLabel* const caption = captionFor(field);
    QGridLayout* const row = axisRow(caption);
    // The label of a tall field aligns with its first line.
    QWidget* const first = m_widgets.value(field.children.front().control);
    if (isTall(first))
        caption->setMinimumHeight(m_measures.fieldHeight());
    row->addWidget(caption, 0, 0, isTall(first) ? Qt::AlignRight | Qt::AlignTop : Qt::AlignRight | Qt::AlignVCenter);
    row->addLayout(line, 0, ValueColumn);
    if (!sharesNotes) {
        line->addSpacing(m_measures.explanationGap());
        line->addWidget(&notes.beside(), 1);
        line->addStretch();
        row->addWidget(&notes.below(), 1, ValueColumn);
    }
    return row;
}

void FormBuilder::addControls(QBoxLayout& line, const Arrangement& field, FieldNotes& notes)
{
    const Arrangement* left = nullptr;
    for (const Arrangement& child : field.children) {
        if (child.kind == Kind::Beside) {
            notes.beside().keepCharacters(child.characters);
            continue;
        }
        if (left)
            line.addSpacing(gapInRow(*left, child));
        left = &child;
        QWidget* const widget = widgetFor(child);
        line.addWidget(widget);
        m_captions.insert(child.control, field.label);
        if (takesNotes(*child.control))
            notes.add(*child.control, *widget);
        if (dynamic_cast<DateView*>(widget))
            notes.beside().keepCharacters(DateExplanation);
        else if (m_form.hasLookup(child.control))
            notes.beside().keepCharacters(NameExplanation);
    }
}

QLabel* FormBuilder::captionFor(const Arrangement& field)
{
    auto* const label = new LabelView(*field.label);
    QList<QWidget*> controls;
    for (const Arrangement& child : field.children) {
        if (child.control)
            controls.append(m_widgets.value(child.control));
    }
    label->setBuddy(*std::find_if(controls.begin(), controls.end() - 1, takesFocus));
    label->speakFor(controls);
    return label;
}

QLayout* FormBuilder::buildSingle(const Arrangement& single)
{
    QWidget* const widget = widgetFor(single);
    auto* const line = bare<QHBoxLayout>();
    line->addWidget(widget, dynamic_cast<QTableView*>(widget) || dynamic_cast<QLabel*>(widget) ? 1 : 0);
    if (!takesNotes(*single.control))
        return line;
    if (m_sharedNotes) {
        m_sharedNotes->add(*single.control, *widget);
        return line;
    }
    FieldNotes& notes = newNotes();
    notes.add(*single.control, *widget);
    return withNotes(line, notes);
}

QLayout* FormBuilder::buildHelp(const Arrangement& help)
{
    QWidget* const text = widgetFor(*help.control);
    text->setFont(scaled(text->font(), TypeSize::Note));
    text->setForegroundRole(QPalette::PlaceholderText); // readable, but quieter than captions
    auto* const line = bare<QHBoxLayout>();
    if (help.label) {
        const QString above = toQString(help.label->caption());
        line->addSpacing(text->fontMetrics().horizontalAdvance(above.left(above.indexOf(u": "_s) + 2)));
    }
    line->addWidget(text, 1);
    return line;
}

// A line with the notes beside and below it.
QLayout* FormBuilder::withNotes(QLayout* line, FieldNotes& notes)
{
    auto* const layout = bare<QVBoxLayout>();
    auto* const whole = bare<QHBoxLayout>();
    const bool fills = line->itemAt(0)->widget() && dynamic_cast<QTableView*>(line->itemAt(0)->widget());
    whole->addLayout(line, fills ? 1 : 0);
    if (fills) {
        layout->addWidget(&notes.beside());
    } else {
        whole->addSpacing(m_measures.explanationGap());
        whole->addWidget(&notes.beside(), 1);
        whole->addStretch();
    }
    layout->addLayout(whole);
    layout->addWidget(&notes.below());
    return layout;
}

QLayout* FormBuilder::buildOnAxis(const Arrangement& part)
{
    QGridLayout* const row = axisRow(nullptr);
    CaptionAxis* const axis = m_axis;
    takeAxis(); // the parts are not columns of the axis
    row->addLayout(buildPart(part.children.front()), 0, ValueColumn);
    m_axis = axis;
    return row;
}

QLayout* FormBuilder::buildOnOwnAxis(const Arrangement& part)
{
    CaptionAxis* const axis = m_axis;
    takeAxis();
    QLayout* const layout = buildPart(part.children.front());
    m_axis = axis;
    return layout;
}

QGridLayout* FormBuilder::axisRow(QWidget* caption)
{
    auto* const row = bare<QGridLayout>();
    row->setColumnMinimumWidth(1, m_measures.captionGap());
    row->setColumnStretch(ValueColumn, 1);
    m_axis->add(*row, caption);
    return row;
}

// The column that follows has its own axis.
void FormBuilder::takeAxis()
{
    m_axes.push_back(std::make_unique<CaptionAxis>());
    m_axis = m_axes.back().get();
}

FieldNotes& FormBuilder::newNotes()
{
    m_notes.push_back(std::make_unique<FieldNotes>());
    return *m_notes.back();
}

QWidget* FormBuilder::widgetFor(const Arrangement& single)
{
    QWidget* const widget = m_maker.make(*single.control);
    setWidth(*widget, single.characters);
    m_widgets.insert(single.control, widget);
    if (takesFocus(widget) || widget->focusProxy())
        m_inOrder.append(widget);
    return widget;
}

// A field is as wide as its content; a list at least as wide as its longest entry.
void FormBuilder::setWidth(QWidget& widget, int characters) const
{
    if (auto* const list = dynamic_cast<ComboBoxView*>(&widget)) {
        list->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
        list->setMinimumWidth(list->fontMetrics().averageCharWidth() * characters + m_measures.units(8));
        return;
    }
    if (characters == 0)
        return;
    const int digit = widget.fontMetrics().horizontalAdvance(u'0');
    if (auto* const rows = dynamic_cast<GridView*>(&widget)) {
        constexpr int shownRows = 9;
        rows->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Expanding);
        rows->setMinimumSize(digit * characters, m_measures.checkRow() * (shownRows + 1));
        return;
    }
    widget.setFixedWidth(digit * characters + m_measures.units(4));
    if (auto* const area = dynamic_cast<TextAreaView*>(&widget)) {
        constexpr int lines = 3;
        const int line = area->fontMetrics().lineSpacing();
        area->setFixedHeight(lines * line + m_measures.fieldHeight() - line);
    }
}

}
