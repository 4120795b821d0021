#pragma once

#include <QProxyStyle>

namespace health {

class FrameView;

// Draws the title of a group as a heading above its content, without a frame.
class HeadingStyle : public QProxyStyle {
public:
    // The frame owns the style.
    explicit HeadingStyle(FrameView* frame);

    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
        const QWidget* widget) const override;
    QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
        const QWidget* widget) const override;
    QSize sizeFromContents(
        ContentsType type, const QStyleOption* option, const QSize& contents, const QWidget* widget) const override;

private:
    int headingHeight() const;
    QFont headingFont() const;
    int titleWidth() const;

    FrameView* m_frame;
};

}
