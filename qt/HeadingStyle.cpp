#include "qt/HeadingStyle.h"

#include "qt/FieldViews.h"
#include "qt/Inks.h"
#include "qt/Measures.h"

#include <QPainter>
#include <QStyleOptionGroupBox>

namespace health {

HeadingStyle::HeadingStyle(FrameView* frame)
    : m_frame(frame)
{
    setParent(frame);
}

int HeadingStyle::headingHeight() const { return m_frame->title().isEmpty() ? 0 : Measures(*m_frame).optionRow(); }

QFont HeadingStyle::headingFont() const { return semibold(m_frame->font()); }

int HeadingStyle::titleWidth() const
{
    return QFontMetrics(headingFont()).size(Qt::TextShowMnemonic, m_frame->title()).width();
}

void HeadingStyle::drawComplexControl(
    ComplexControl control, const QStyleOptionComplex* option, QPainter* painter, const QWidget* widget) const
{
    if (control != CC_GroupBox) {
        QProxyStyle::drawComplexControl(control, option, painter, widget);
        return;
    }
    const QRect line(0, 0, m_frame->width(), headingHeight());
    const QFont plain = painter->font();
    painter->setFont(headingFont());
    drawItemText(painter, line, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextShowMnemonic, option->palette,
        m_frame->isEnabled(), m_frame->title(), QPalette::WindowText);
    painter->setFont(plain);
    QPalette quiet = option->palette;
    quiet.setColor(QPalette::WindowText, colourOf(Ink::Quiet, quiet));
    const int left = titleWidth() + Measures(*m_frame).captionGap();
    drawItemText(painter, line.adjusted(left, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter, quiet, true, m_frame->aside(),
        QPalette::WindowText);
}

QRect HeadingStyle::subControlRect(
    ComplexControl control, const QStyleOptionComplex* option, SubControl part, const QWidget* widget) const
{
    if (control != CC_GroupBox)
        return QProxyStyle::subControlRect(control, option, part, widget);
    const int heading = headingHeight();
    if (part == SC_GroupBoxLabel)
        return { 0, 0, m_frame->width(), heading };
    return part == SC_GroupBoxContents ? option->rect.adjusted(0, heading, 0, 0) : option->rect;
}

QSize HeadingStyle::sizeFromContents(
    ContentsType type, const QStyleOption* option, const QSize& contents, const QWidget* widget) const
{
    if (type != CT_GroupBox)
        return QProxyStyle::sizeFromContents(type, option, contents, widget);
    if (m_frame->title().isEmpty())
        return { 0, 0 };
    const int aside = m_frame->aside().isEmpty()
        ? 0
        : Measures(*m_frame).captionGap() + m_frame->fontMetrics().horizontalAdvance(m_frame->aside());
    return { titleWidth() + aside, headingHeight() };
}

}
