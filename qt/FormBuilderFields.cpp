// The part of FormBuilder that builds single controls and fields with their captions and notes.
#include "qt/FormBuilder.h"

#include "qt/ArrangementKinds.h"
#include "qt/ChoiceViews.h"
#include "qt/ComboBoxView.h"
#include "qt/DateView.h"
#include "qt/DetailsTable.h"
#include "qt/FieldViews.h"
#include "qt/GridView.h"
#include "qt/TextViews.h"
#include "qt/ToneLabel.h"
#include "toolkit/QtText.h"

#include <QBoxLayout>
#include <QGridLayout>

#include <algorithm>

namespace health {

using namespace Qt::StringLiterals;

namespace {

using Kind = Arrangement::Kind;

constexpr int DateExplanation = 32; // characters, such as "Wed Sep 30, 2026 · 10 months ago"
constexpr int NameExplanation = 24;

bool takesFocus(const QWidget* widget) { return widget->focusPolicy() != Qt::NoFocus; }

// The arrows of a number stand in its field. They lie on it and not in it: a click on them must not move the focus.
void putInside(QBoxLayout& line, QWidget& field, QWidget& arrows)
{
    auto& entry = dynamic_cast<EntryLine&>(field);
    entry.setTextMargins(0, 0, arrows.sizeHint().width() - Measures(field).u(), 0);
    if (entry.minimumWidth() == entry.maximumWidth())
        entry.setFixedWidth(entry.minimumWidth() + entry.textMargins().right());
    line.removeWidget(&entry);
    auto* const both = bare<QGridLayout>();
    both->addWidget(&entry, 0, 0);
    both->addWidget(&arrows, 0, 0, Qt::AlignRight | Qt::AlignVCenter);
    line.addLayout(both);
}

bool isTall(const QWidget* widget)
{
    return dynamic_cast<const TextAreaView*>(widget) || dynamic_cast<const CheckListView*>(widget);
}

}

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
            keepRoom(notes.beside(), child.characters);
            continue;
        }
        QWidget* const widget = widgetFor(child);
        if (left && dynamic_cast<UpDownView*>(widget)) {
            putInside(line, *m_widgets.value(left->control), *widget);
            continue;
        }
        if (left)
            line.addSpacing(gapInRow(*left, child));
        left = &child;
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

QLayout* FormBuilder::buildDetails(const Arrangement& details)
{
    QWidget* const widget = widgetFor(details);
    auto* const table = dynamic_cast<QTableView*>(widget);
    auto* const line = bare<QHBoxLayout>();
    line->addWidget(widget);
    if (!table)
        return line;
    m_axis->add(*table, makeDetails(*table, m_measures));
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
    if (single.isStrong)
        widget->setFont(semibold(widget->font()));
    m_widgets.insert(single.control, widget);
    if (takesFocus(widget) || widget->focusProxy())
        m_inOrder.append(widget);
    return widget;
}

void FormBuilder::keepRoom(ToneLabel& words, int characters)
{
    words.keepCharacters(characters);
    m_rooms.append(&words);
}

void FormBuilder::giveUpRooms()
{
    for (ToneLabel* const words : m_rooms)
        words->keepCharacters(0);
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
