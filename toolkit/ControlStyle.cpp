#include "toolkit/ControlStyle.h"

#include "toolkit/ControlPainting.h"
#include "toolkit/Inks.h"
#include "toolkit/Measures.h"

#include <QAbstractItemView>
#include <QAbstractScrollArea>
#include <QApplication>
#include <QPainter>
#include <QRadioButton>
#include <QStyleFactory>
#include <QStyleOption>

#include <algorithm>
#include <memory>

namespace health {

using namespace Qt::StringLiterals;

namespace {

constexpr double MarkSize = 0.92; // circles and boxes, in em
constexpr double ArrowWidth = 1.25; // of a drop-down list, in em
constexpr double TextMargin = 1.5; // between frame and text of a field, in units
constexpr int TextFlags = int { Qt::AlignVCenter } | int { Qt::AlignLeft };
constexpr int ButtonCharacters = 12; // the least width

// Child of a widget; keeps the style during the widget's life.
struct StyleUse : QObject {
    StyleUse(QWidget& widget, std::shared_ptr<ControlStyle> used)
        : QObject(&widget)
        , style(std::move(used))
    {
    }

    std::shared_ptr<ControlStyle> style;
};

Look lookOf(const QStyleOption& option, const QWidget& widget)
{
    const auto has = [&](QStyle::StateFlag flag) { return option.state.testFlag(flag); };
    return { .enabled = has(QStyle::State_Enabled),
        .focused = has(QStyle::State_HasFocus),
        .pressed = has(QStyle::State_Sunken),
        .hovered = has(QStyle::State_MouseOver),
        .faulty = !widget.property(FaultProperty).toString().isEmpty(),
        .flashing = widget.property(FlashProperty).toBool(),
        .filled = widget.property(FilledProperty).toBool(),
        .checked = has(QStyle::State_On) };
}

// The current row of a list shows the focus itself.
Look areaLook(const QStyleOption& option, const QWidget& widget)
{
    Look look = lookOf(option, widget);
    const auto* const list = qobject_cast<const QAbstractItemView*>(&widget);
    if (list && list->currentIndex().isValid())
        look.focused = false;
    return look;
}

bool isCheckRow(const QStyleOption* option)
{
    const auto* const row = qstyleoption_cast<const QStyleOptionViewItem*>(option);
    return row && row->features.testFlag(QStyleOptionViewItem::HasCheckIndicator);
}

// The circle or box at the left of a place, half a row high or less.
QRect markIn(const QRect& place, const Measures& measures)
{
    const int side = measures.ems(MarkSize);
    return { place.left(), place.top() + (place.height() - side) / 2, side, side };
}

QSize choiceSize(const QSize& text, const Measures& measures)
{
    const int marks = measures.ems(MarkSize) + measures.units(TextMargin);
    return { marks + text.width() + measures.u(), std::max(measures.optionRow(), text.height()) };
}

QSize buttonSize(const QStyleOption& option, const QSize& text, const Measures& measures)
{
    const auto* const button = qstyleoption_cast<const QStyleOptionButton*>(&option);
    if (button && button->text == "..."_L1)
        return { measures.ellipsisWidth(), measures.fieldHeight() };
    const int least = option.fontMetrics.averageCharWidth() * ButtonCharacters;
    return { std::max(text.width() + measures.buttonPadding(), least), measures.fieldHeight() };
}

}

void ControlStyle::giveTo(QWidget& widget)
{
    static std::weak_ptr<ControlStyle> shared;
    std::shared_ptr<ControlStyle> style = shared.lock();
    if (!style)
        shared = style = std::shared_ptr<ControlStyle>(new ControlStyle);
    new StyleUse(widget, style);
    widget.setStyle(style.get());
}

ControlStyle::ControlStyle()
    : QProxyStyle(QApplication::style()->name())
{
    watchApplication();
}

// The application destroys its style after it has installed another one.
void ControlStyle::watchApplication()
{
    connect(QApplication::style(), &QObject::destroyed, this, &ControlStyle::followApplication);
}

void ControlStyle::followApplication()
{
    if (QCoreApplication::closingDown())
        return;
    watchApplication();
    setBaseStyle(QStyleFactory::create(QApplication::style()->name()));
    for (QWidget* const widget : QApplication::allWidgets()) {
        if (widget->style() == this)
            widget->setStyle(this); // the application repolishes only widgets without a style of their own
    }
}

// --- Lengths ---

int ControlStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const
{
    if (!widget)
        return QApplication::style()->pixelMetric(metric, option, widget);
    switch (metric) {
    case PM_IndicatorWidth:
    case PM_IndicatorHeight:
    case PM_ExclusiveIndicatorWidth:
    case PM_ExclusiveIndicatorHeight:
        return Measures(*widget).ems(MarkSize);
    case PM_DefaultFrameWidth:
        if (qobject_cast<const QAbstractScrollArea*>(widget))
            return Measures(*widget).focusFrame() + Measures(*widget).hairline(); // room for the round corners
        break;
    default:
        break;
    }
    return QApplication::style()->pixelMetric(metric, option, widget);
}

QSize ControlStyle::sizeFromContents(
    ContentsType type, const QStyleOption* option, const QSize& contents, const QWidget* widget) const
{
    if (!widget || !option)
        return QProxyStyle::sizeFromContents(type, option, contents, widget);
    const Measures measures(*widget);
    switch (type) {
    case CT_LineEdit:
        return { contents.width() + 2 * measures.u(), measures.fieldHeight() };
    case CT_ComboBox:
        return { contents.width() + 2 * measures.units(TextMargin) + measures.ems(ArrowWidth), measures.fieldHeight() };
    case CT_RadioButton:
    case CT_CheckBox:
        return choiceSize(contents, measures);
    case CT_PushButton:
        return buttonSize(*option, contents, measures).grownBy(widget->contentsMargins());
    default:
        return QProxyStyle::sizeFromContents(type, option, contents, widget);
    }
}

QRect ControlStyle::subElementRect(SubElement element, const QStyleOption* option, const QWidget* widget) const
{
    if (!widget)
        return QProxyStyle::subElementRect(element, option, widget);
    const Measures measures(*widget);
    const QRect& place = option->rect;
    switch (element) {
    case SE_LineEditContents:
        return place.adjusted(measures.u(), 0, -measures.u(), 0);
    case SE_RadioButtonIndicator:
    case SE_CheckBoxIndicator:
        return markIn(place, measures);
    case SE_RadioButtonContents:
    case SE_CheckBoxContents:
        return place.adjusted(measures.ems(MarkSize) + measures.units(TextMargin), 0, 0, 0);
    case SE_ItemViewItemCheckIndicator:
        if (isCheckRow(option))
            return markIn(place.adjusted(measures.units(2.5), 0, 0, 0), measures);
        break;
    default:
        break;
    }
    return QProxyStyle::subElementRect(element, option, widget);
}

QRect ControlStyle::subControlRect(
    ComplexControl control, const QStyleOptionComplex* option, SubControl part, const QWidget* widget) const
{
    if (control != CC_ComboBox || !widget)
        return QProxyStyle::subControlRect(control, option, part, widget);
    const Measures measures(*widget);
    const QRect& place = option->rect;
    const int arrow = measures.ems(ArrowWidth);
    switch (part) {
    case SC_ComboBoxFrame:
        return place;
    case SC_ComboBoxArrow:
        return place.adjusted(place.width() - arrow, 0, 0, 0);
    case SC_ComboBoxEditField:
        return place.adjusted(measures.units(TextMargin), 0, -arrow, 0);
    default:
        return QProxyStyle::subControlRect(control, option, part, widget);
    }
}

// --- Drawing ---

void ControlStyle::drawPrimitive(
    PrimitiveElement element, const QStyleOption* option, QPainter* painter, const QWidget* widget) const
{
    if (!widget)
        return QProxyStyle::drawPrimitive(element, option, painter, widget);
    switch (element) {
    case PE_PanelLineEdit:
    case PE_FrameLineEdit:
        return drawField(*painter, option->rect, *widget, lookOf(*option, *widget));
    case PE_IndicatorRadioButton:
        return drawChoice(*painter, option->rect, *widget, Mark::Option, lookOf(*option, *widget));
    case PE_IndicatorCheckBox:
    case PE_IndicatorItemViewItemCheck:
        return drawChoice(*painter, option->rect, *widget, Mark::Check, lookOf(*option, *widget));
    default:
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
}

void ControlStyle::drawControl(
    ControlElement element, const QStyleOption* option, QPainter* painter, const QWidget* widget) const
{
    if (!widget)
        return QProxyStyle::drawControl(element, option, painter, widget);
    const auto* const button = qstyleoption_cast<const QStyleOptionButton*>(option);
    if (element == CE_ShapedFrame)
        drawField(*painter, option->rect, *widget, areaLook(*option, *widget));
    else if (button && (element == CE_RadioButton || element == CE_CheckBox))
        drawChoiceButton(*button, *painter, *widget);
    else if (button && element == CE_PushButtonBevel)
        drawButton(*painter, widget->contentsRect(), *widget, lookOf(*option, *widget));
    else if (button && element == CE_PushButtonLabel)
        drawButtonLabel(*button, *painter, *widget);
    else if (const auto* const list = qstyleoption_cast<const QStyleOptionComboBox*>(option);
             list && element == CE_ComboBoxLabel)
        drawAnswer(*list, *painter, *widget);
    else if (element == CE_ItemViewItem && isCheckRow(option))
        drawCheckRow(*qstyleoption_cast<const QStyleOptionViewItem*>(option), *painter, *widget);
    else if (element == CE_PushButton && button) {
        drawControl(CE_PushButtonBevel, option, painter, widget); // the focus is part of the frame
        drawControl(CE_PushButtonLabel, option, painter, widget);
    } else
        QProxyStyle::drawControl(element, option, painter, widget);
}

void ControlStyle::drawComplexControl(
    ComplexControl control, const QStyleOptionComplex* option, QPainter* painter, const QWidget* widget) const
{
    if (control != CC_ComboBox || !widget)
        return QProxyStyle::drawComplexControl(control, option, painter, widget);
    const Look look = lookOf(*option, *widget);
    drawField(*painter, option->rect, *widget, look);
    const QRect arrow = subControlRect(control, option, SC_ComboBoxArrow, widget);
    drawSymbol(*painter, arrow, *widget, Symbol::ChevronDown,
        option->palette.color(look.enabled ? QPalette::Active : QPalette::Disabled, QPalette::Text));
}

int ControlStyle::mnemonicFlag(const QStyleOption& option, const QWidget& widget) const
{
    return styleHint(SH_UnderlineShortcut, &option, &widget) ? Qt::TextShowMnemonic : Qt::TextHideMnemonic;
}

void ControlStyle::drawChoiceButton(const QStyleOptionButton& option, QPainter& painter, const QWidget& widget) const
{
    const bool round = qobject_cast<const QRadioButton*>(&widget);
    const Look look = lookOf(option, widget);
    const Measures measures(widget);
    drawChoice(painter, markIn(option.rect, measures), widget, round ? Mark::Option : Mark::Check, look);
    const QRect place = subElementRect(round ? SE_RadioButtonContents : SE_CheckBoxContents, &option, &widget);
    const int flags = TextFlags | mnemonicFlag(option, widget);
    drawItemText(&painter, place, flags, option.palette, look.enabled, option.text, QPalette::WindowText);
    if (!look.focused)
        return;
    const int margin = measures.units(0.75);
    const QRect text = itemTextRect(option.fontMetrics, place, flags, look.enabled, option.text);
    drawFocus(painter, text.adjusted(-margin, -1, margin, 1) & option.rect, widget);
}

void ControlStyle::drawButtonLabel(const QStyleOptionButton& option, QPainter& painter, const QWidget& widget) const
{
    QPalette palette = option.palette;
    palette.setColor(QPalette::ButtonText, buttonInk(option.palette, lookOf(option, widget)));
    const int flags = int { Qt::AlignCenter } | mnemonicFlag(option, widget);
    drawItemText(&painter, widget.contentsRect(), flags, palette, true, option.text, QPalette::ButtonText);
}

void ControlStyle::drawAnswer(const QStyleOptionComboBox& option, QPainter& painter, const QWidget& widget) const
{
    const QRect place = subControlRect(CC_ComboBox, &option, SC_ComboBoxEditField, &widget);
    const QString text = option.fontMetrics.elidedText(option.currentText, Qt::ElideRight, place.width());
    drawItemText(
        &painter, place, TextFlags, option.palette, option.state.testFlag(State_Enabled), text, QPalette::Text);
}

// A checked row is tinted and semibold; the current row has a frame.
void ControlStyle::drawCheckRow(const QStyleOptionViewItem& option, QPainter& painter, const QWidget& widget) const
{
    Look look = lookOf(option, widget);
    look.checked = option.checkState == Qt::Checked;
    const Measures measures(widget);
    painter.save();
    if (look.checked && look.enabled)
        painter.fillRect(option.rect, colourOf(Ink::SelectionTint, widget.palette()));
    const QRect mark = subElementRect(SE_ItemViewItemCheckIndicator, &option, &widget);
    drawChoice(painter, mark, widget, Mark::Check, look);
    painter.setFont(look.checked ? semibold(option.font) : option.font);
    const QRect text(
        mark.right() + measures.units(2) + 1, option.rect.top(), option.rect.width(), option.rect.height());
    drawItemText(&painter, text & option.rect, TextFlags | Qt::TextSingleLine, widget.palette(), look.enabled,
        option.text, QPalette::Text);
    painter.restore();
    if (look.focused)
        drawFocus(painter, option.rect, widget);
    else if (option.state.testFlag(State_Selected)) {
        painter.save();
        const QColor frame = colourOf(Ink::FieldFrame, widget.palette());
        painter.setPen(QPen(look.enabled ? frame : fadedColourOf(Ink::FieldFrame, widget.palette()), 1));
        painter.drawRect(option.rect.adjusted(0, 0, -1, -1));
        painter.restore();
    }
}

}
