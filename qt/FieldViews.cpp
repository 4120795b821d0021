#include "qt/FieldViews.h"

#include "qt/HeadingStyle.h"
#include "toolkit/Measures.h"
#include "toolkit/QtText.h"

#include <QVBoxLayout>

#include <algorithm>

namespace health {

using namespace Qt::StringLiterals;

// --- Label and frame ---

LabelView::LabelView(Label& label)
    : Mirror(label)
{
    setTextFormat(Qt::PlainText);
    mirrorCaption();
    mirrorColour();
}

// Qt measures a caption with an underlined letter slightly too short.
QSize LabelView::minimumSizeHint() const { return QLabel::minimumSizeHint() + QSize(2, 0); }

QSize LabelView::sizeHint() const { return QLabel::sizeHint() + QSize(2, 0); }

void LabelView::mirror(Change change)
{
    if (change == Change::Caption)
        mirrorCaption();
    else if (change == Change::ForeColour)
        mirrorColour();
}

void LabelView::mirrorCaption()
{
    setText(toQString(m_control.caption()));
    speakCaption();
    for (const QPointer<QWidget>& neighbour : m_describes) {
        if (neighbour)
            neighbour->setAccessibleDescription(text());
    }
    // Help texts wrap.
    const bool isLong = m_control.caption().size() > 60;
    setWordWrap(isLong);
    // A changing unit or state must not move the fields beside it.
    const int kept = m_describes.isEmpty() ? 0 : std::max(minimumWidth(), sizeHint().width());
    setMinimumWidth(isLong ? fontMetrics().averageCharWidth() * 60 : kept);
}

void LabelView::speakFor(const QList<QWidget*>& controls)
{
    m_spokenFor.clear();
    for (QWidget* const control : controls) {
        if (auto* const label = dynamic_cast<LabelView*>(control))
            label->describe(controls);
        else
            m_spokenFor.append(control);
    }
    speakCaption();
}

// A unit or a state beside widgets becomes their description.
void LabelView::describe(const QList<QWidget*>& controls)
{
    for (QWidget* const control : controls) {
        if (control != this)
            m_describes.append(control);
    }
    mirrorCaption();
}

void LabelView::speakCaption()
{
    for (const QPointer<QWidget>& control : m_spokenFor) {
        if (control)
            nameControl(*control, text());
    }
}

// Maps grey to a palette role, because a fixed colour is not readable on every background. PlaceholderText stays
// readable, Disabled text does not.
void LabelView::mirrorColour()
{
    setForegroundRole(m_control.foreColour() == GreyText ? QPalette::PlaceholderText : QPalette::WindowText);
}

FrameView::FrameView(mevContainer& container)
    : Mirror(container, toQString(container.caption()))
    , m_heading(new HeadingStyle(this))
{
    setStyle(m_heading);
}

void FrameView::setAside(const QString& text)
{
    if (text == m_heading->aside())
        return;
    m_heading->setAside(text);
    setAccessibleDescription(text);
    updateGeometry();
    update();
}

void FrameView::mirror(Change change)
{
    if (change == Change::Caption)
        setTitle(toQString(m_control.caption()));
}

// --- Arrows ---

UpDownView::UpDownView(UpDown& upDown)
    : Mirror(upDown)
{
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, Measures(*this).focusFrame(), 0);
    layout->setSpacing(0);
    for (const int step : { 1, -1 }) {
        auto* const arrow = new FieldButton(step > 0 ? Symbol::ChevronUp : Symbol::ChevronDown);
        m_arrows.append(arrow);
        arrow->setAutoRepeat(true);
        arrow->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored); // half of the height, whatever it is
        connect(arrow, &FieldButton::clicked, this, [this, step] { m_control.step(step); });
        layout->addWidget(arrow);
    }
    setSpokenName({});
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize UpDownView::sizeHint() const
{
    const Measures measures(*this);
    return { measures.em() + measures.focusFrame(), measures.fieldHeight() - 2 * measures.focusFrame() };
}

void UpDownView::setSpokenName(const QString& name)
{
    m_arrows[0]->setAccessibleName(u"%1 one more"_s.arg(name).trimmed());
    m_arrows[1]->setAccessibleName(u"%1 one less"_s.arg(name).trimmed());
}

}
