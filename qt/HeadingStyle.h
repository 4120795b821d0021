#pragma once

#include <QProxyStyle>

class QGroupBox;

namespace health {

// Draws the title of a group as a heading above its content, without a frame.
class HeadingStyle : public QProxyStyle {
public:
    // The group owns the style.
    explicit HeadingStyle(QGroupBox* group);

    // A quiet text beside the heading.
    void setAside(const QString& text) { m_aside = text; }
    const QString& aside() const { return m_aside; }

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

    QGroupBox* m_group;
    QString m_aside;
};

}
