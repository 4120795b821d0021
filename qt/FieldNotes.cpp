#include "qt/FieldNotes.h"

#include "qt/PressedAtOnce.h"
#include "qt/ToneLabel.h"
#include "toolkit/Announcer.h"
#include "toolkit/Measures.h"
#include "toolkit/QtText.h"

#include <QHBoxLayout>
#include <QPushButton>

#include <algorithm>

namespace health {

using namespace Qt::StringLiterals;

FieldNotes::FieldNotes()
    : m_beside(new ToneLabel)
    , m_below(new QWidget)
    , m_line(new ToneLabel(TypeSize::Note))
    , m_suggestion(new ToneLabel(TypeSize::Note))
    , m_use(new PressedAtOnce<QPushButton>(u"Use"_s))
{
    auto* const layout = new QHBoxLayout(m_below);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(Measures(*m_below).explanationGap());
    for (QWidget* const widget : std::initializer_list<QWidget*> { m_line, m_suggestion, m_use })
        layout->addWidget(widget);
    layout->addStretch();
    // Screen readers read them out with the window otherwise, and again as the field's description.
    for (QWidget* const label : std::initializer_list<QWidget*> { m_beside, m_line, m_suggestion })
        label->setAccessibleName(u" "_s);
    m_use->setFont(scaled(m_use->font(), TypeSize::Note));
    m_use->setFixedHeight(m_use->fontMetrics().height() + 2); // within the line: nothing moves when it appears
    m_use->setAutoDefault(false);
    m_use->setFocusPolicy(Qt::NoFocus); // the focus stays in the field
    m_use->hide();
    m_below->hide();
    connect(m_use, &QPushButton::clicked, this, [this] {
        if (const auto enter = m_suggested)
            enter();
    });
}

void FieldNotes::add(Control& control, QWidget& widget)
{
    m_fields.append({ &control, widget.focusProxy() ? widget.focusProxy() : &widget, {}, {}, {} });
}

QWidget* FieldNotes::belowOf(const Control* control) const
{
    const bool isHere = std::ranges::any_of(m_fields, [&](const Field& field) { return field.control == control; });
    return isHere ? m_below : nullptr;
}

bool FieldNotes::refresh(Form& form)
{
    QString besideText;
    Tone besideTone = Tone::Quiet;
    bool hasLine = false;
    for (Field& field : m_fields) {
        field.explanation = form.explain(*field.control);
        hasLine = hasLine || !field.explanation.below.empty();
        if (besideText.isEmpty() && field.control->fault().empty()) { // the fault says more
            besideText = toQString(field.explanation.beside);
            besideTone = field.explanation.tone;
        }
        describe(field);
    }
    m_beside->say(besideText, besideTone);
    if (hasLine)
        m_line->keepLine(); // so that nothing moves when a text comes or goes
    const Line line = lineFor(form.activeControl());
    const bool differs = line.text != m_line->text();
    m_line->say(line.text, line.tone);
    showSuggestion();
    m_below->setVisible(!m_line->isHidden() || !m_use->isHidden());
    if (line.isNews && differs)
        announce(*m_line, line.text);
    return !m_use->isHidden();
}

// What is allowed is always shown in a row with one field; among several, that of the field with the focus.
FieldNotes::Line FieldNotes::lineFor(const Control* active) const
{
    Line line;
    for (const Field& field : m_fields) {
        if (!field.control->fault().empty())
            return { toQString(field.control->fault()), Tone::Error, true };
        if (!field.control->note().empty())
            line = { toQString(field.control->note()), Tone::Caution, true };
        else if (line.tone == Tone::Quiet && (m_fields.size() == 1 || field.control == active))
            line.text = toQString(field.explanation.below);
    }
    return line;
}

void FieldNotes::showSuggestion()
{
    const auto offered =
        std::ranges::find_if(m_fields, [](const Field& field) { return !field.explanation.suggestion.empty(); });
    const bool isOffered = offered != m_fields.end();
    m_line->setMinimumWidth(isOffered ? m_line->sizeHint().width() : 0); // only the longer of the two wraps
    m_suggestion->say(isOffered ? toQString(offered->explanation.suggestion) : QString(), Tone::Quiet);
    m_suggested = isOffered ? offered->explanation.use : nullptr;
    m_use->setVisible(m_suggested != nullptr);
    if (isOffered)
        m_use->setAccessibleDescription(m_suggestion->text());
}

std::optional<FieldNotes::Refusal> FieldNotes::refusal() const
{
    for (const Field& field : m_fields) {
        if (!field.control->fault().empty())
            return Refusal { field.control, toQString(field.control->fault()).simplified() };
        const Explanation& explanation = field.explanation;
        if (explanation.tone == Tone::Error && !explanation.beside.empty() && field.control->canBeUsed())
            return Refusal { field.control, toQString(explanation.beside) };
    }
    return std::nullopt;
}

void FieldNotes::pair(FieldNotes& one, FieldNotes& other)
{
    one.m_pairs.append(&other);
    other.m_pairs.append(&one);
}

void FieldNotes::followPair()
{
    if (std::ranges::none_of(m_pairs, [](const FieldNotes* pair) { return !pair->m_below->isHidden(); }))
        return;
    m_line->keepLine();
    m_below->show();
}

void FieldNotes::setUseCaption(const QString& caption)
{
    if (m_use->text() != caption)
        m_use->setText(caption);
}

// Other parts of the program describe the field too, by a unit or a tip.
void FieldNotes::describe(Field& field) const
{
    if (!field.widget)
        return;
    if (const QString current = field.widget->accessibleDescription(); current != field.described)
        field.own = current;
    const QString own = field.own.isEmpty() ? field.widget->toolTip() : field.own;
    QStringList texts { toQString(field.control->fault().empty() ? field.control->note() : field.control->fault()),
        toQString(field.explanation.beside), toQString(field.explanation.below),
        toQString(field.explanation.suggestion) };
    texts.removeAll(QString());
    texts.removeDuplicates(); // a refusal may say the same as the explanation before it
    const bool isRepeated = std::ranges::any_of(texts, [&](const QString& text) { return text.startsWith(own); });
    if (!own.isEmpty() && !texts.isEmpty() && !isRepeated)
        texts.prepend(own);
    field.described = texts.isEmpty() ? field.own : texts.join(u". "_s).replace(u".. "_s, u". "_s);
    if (field.widget->accessibleDescription() != field.described)
        field.widget->setAccessibleDescription(field.described);
}

}
