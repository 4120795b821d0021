#include "qt/HeadingStyle.h"

#include "toolkit/Inks.h"
#include "toolkit/Measures.h"

#include <QGroupBox>
#include <QPainter>
#include <QStyleOptionGroupBox>

namespace health {

HeadingStyle::HeadingStyle(QGroupBox* group)
    : m_group(group)
{
    setParent(group);
}

int HeadingStyle::headingHeight() const { return m_group->title().isEmpty() ? 0 : Measures(*m_group).optionRow(); }

QFont HeadingStyle::headingFont() const { return semibold(m_group->font()); }

int HeadingStyle::titleWidth() const
{
    return QFontMetrics(headingFont()).size(Qt::TextShowMnemonic, m_group->title()).width();
}

void HeadingStyle::drawComplexControl(
    ComplexControl control, const QStyleOptionComplex* option, QPainter* painter, const QWidget* widget) const
{
    if (control != CC_GroupBox) {
        QProxyStyle::drawComplexControl(control, option, painter, widget);
        return;
    }
    const QRect line(0, 0, m_group->width(), headingHeight());
    const QFont plain = painter->font();
    painter->setFont(headingFont());
    drawItemText(painter, line, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextShowMnemonic, option->palette,
        m_group->isEnabled(), m_group->title(), QPalette::WindowText);
    painter->setFont(plain);
    QPalette quiet = option->palette;
    quiet.setColor(QPalette::WindowText, colourOf(Ink::Quiet, quiet));
    const int left = titleWidth() + Measures(*m_group).captionGap();
    drawItemText(painter, line.adjusted(left, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter, quiet, true, m_aside,
        QPalette::WindowText);
}

QRect HeadingStyle::subControlRect(
    ComplexControl control, const QStyleOptionComplex* option, SubControl part, const QWidget* widget) const
{
    if (control != CC_GroupBox)
        return QProxyStyle::subControlRect(control, option, part, widget);
    const int heading = headingHeight();
    if (part == SC_GroupBoxLabel)
        return { 0, 0, m_group->width(), heading };
    return part == SC_GroupBoxContents ? option->rect.adjusted(0, heading, 0, 0) : option->rect;
}

QSize HeadingStyle::sizeFromContents(
    ContentsType type, const QStyleOption* option, const QSize& contents, const QWidget* widget) const
{
    if (type != CT_GroupBox)
        return QProxyStyle::sizeFromContents(type, option, contents, widget);
    if (m_group->title().isEmpty())
        return { 0, 0 };
    const int aside =
        m_aside.isEmpty() ? 0 : Measures(*m_group).captionGap() + m_group->fontMetrics().horizontalAdvance(m_aside);
    return { titleWidth() + aside, headingHeight() };
}

}
