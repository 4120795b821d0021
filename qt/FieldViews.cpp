#include "qt/FieldViews.h"

#include "qt/DateView.h"
#include "toolkit/QtText.h"

#include <QCoreApplication>
#include <QVBoxLayout>

#include <algorithm>

namespace health {

void nameControl(QWidget& control, QString words)
{
    words.remove(u'&');
    if (auto* const arrows = dynamic_cast<UpDownView*>(&control))
        arrows->setSpokenName(words);
    else if (auto* const date = dynamic_cast<DateView*>(&control))
        date->setSpokenName(words);
    else if (auto* const button = dynamic_cast<QAbstractButton*>(&control); !button)
        control.setAccessibleName(words);
    else if (button->text() == QStringLiteral("..."))
        button->setAccessibleName(QCoreApplication::translate("FormBuilder", "Find %1").arg(words));
}

// --- Label and frame ---

LabelView::LabelView(Label& label)
    : Mirror(label)
{
    setTextFormat(Qt::PlainText);
    mirrorCaption();
    mirrorColour();
}

// The toolkit measures a caption with an underlined letter a little too short.
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
    // Help texts run over several lines.
    const bool isLong = m_control.caption().size() > 60;
    setWordWrap(isLong);
    // A unit or a state that changes must not make the fields beside it jump.
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

// A unit or a state beside controls is their description.
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

// Grey is what the palette shows for it; other numbers would not be readable on every ground. That of a hint can be
// read; that of a disabled control cannot.
void LabelView::mirrorColour()
{
    setForegroundRole(m_control.foreColour() == GreyText ? QPalette::PlaceholderText : QPalette::WindowText);
}

FrameView::FrameView(mevContainer& container)
    : Mirror(container, toQString(container.caption()))
{
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
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    for (const int step : { 1, -1 }) {
        auto* const arrow = new QToolButton;
        m_arrows.append(arrow);
        arrow->setArrowType(step > 0 ? Qt::UpArrow : Qt::DownArrow);
        arrow->setAutoRepeat(true);
        arrow->setFocusPolicy(Qt::NoFocus); // the field beside it can be typed in
        arrow->setFixedHeight(fontMetrics().height() * 3 / 4);
        connect(arrow, &QToolButton::clicked, this, [this, step] { m_control.step(step); });
        layout->addWidget(arrow);
    }
    setSpokenName({});
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void UpDownView::setSpokenName(const QString& name)
{
    m_arrows[0]->setAccessibleName(tr("%1 one more").arg(name).trimmed());
    m_arrows[1]->setAccessibleName(tr("%1 one less").arg(name).trimmed());
}

}
