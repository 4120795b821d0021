#include "toolkit/ControlPainting.h"

#include "toolkit/Contrast.h"
#include "toolkit/Inks.h"
#include "toolkit/Measures.h"

#include <algorithm>

namespace health {

namespace {

// Restores the painter at the end of a function.
struct Kept {
    explicit Kept(QPainter& kept)
        : painter(kept)
    {
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing);
    }
    ~Kept() { painter.restore(); }
    Kept(const Kept&) = delete;
    Kept& operator=(const Kept&) = delete;

    QPainter& painter;
};

QColor windowColour(const QPalette& palette) { return palette.color(QPalette::Active, QPalette::Window); }

QColor textColour(const QPalette& palette) { return palette.color(QPalette::Active, QPalette::Text); }

QColor baseColour(const QPalette& palette) { return palette.color(QPalette::Active, QPalette::Base); }

QPen edgePen(const Edge& edge) { return edge.colour.isValid() ? QPen(edge.colour, edge.width) : QPen(Qt::NoPen); }

// The edge lies inside the place.
void drawRounded(QPainter& painter, const QRect& place, double radius, const QColor& ground, const Edge& edge)
{
    const Kept kept(painter);
    const double inset = edge.colour.isValid() ? edge.width / 2.0 : 0;
    painter.setPen(edgePen(edge));
    painter.setBrush(ground.isValid() ? QBrush(ground) : QBrush(Qt::NoBrush));
    painter.drawRoundedRect(QRectF(place).adjusted(inset, inset, -inset, -inset), radius - inset, radius - inset);
}

Edge frameOf(const QWidget& widget, const Look& look)
{
    const Measures measures(widget);
    const QPalette& palette = widget.palette();
    if (!look.enabled)
        return { fadedColourOf(Ink::FieldFrame, palette), measures.hairline() };
    const Ink ink = look.faulty ? Ink::Error : look.focused ? Ink::Focus : Ink::FieldFrame;
    return { colourOf(ink, palette), look.focused ? measures.focusFrame() : measures.hairline() };
}

// A little more contrast under the mouse, more while the button is held down.
double emphasis(const Look& look)
{
    if (!look.enabled)
        return 0;
    return look.pressed ? 0.12 : look.hovered ? 0.05 : 0;
}

QColor plainButtonGround(const QPalette& palette, const Look& look)
{
    const QColor window = windowColour(palette);
    if (!look.enabled)
        return look.filled ? mixed(textColour(palette), window, 0.08) : window;
    const QColor ground =
        isDark(palette) ? mixed(textColour(palette), window, 0.06) : mixed(baseColour(palette), window, 0.6);
    return mixed(textColour(palette), ground, emphasis(look));
}

// Moves away from the caption's colour, so that the contrast grows.
QColor filledButtonGround(const QPalette& palette, const Look& look)
{
    const QColor ink = buttonInk(palette, look);
    const QColor away = contrast(ink, Qt::black) > contrast(ink, Qt::white) ? Qt::black : Qt::white;
    return mixed(away, colourOf(Ink::Highlight, palette), 1.5 * emphasis(look));
}

}

QColor fieldGround(const QPalette& palette, const Look& look)
{
    if (!look.enabled)
        return mixed(baseColour(palette), windowColour(palette), 0.3);
    return look.flashing ? colourOf(Ink::CautionTint, palette) : baseColour(palette);
}

void drawField(QPainter& painter, const QRect& place, const QWidget& widget, const Look& look)
{
    drawRounded(
        painter, place, Measures(widget).cornerRadius(), fieldGround(widget.palette(), look), frameOf(widget, look));
}

QColor buttonInk(const QPalette& palette, const Look& look)
{
    if (!look.enabled)
        return palette.color(QPalette::Disabled, QPalette::WindowText);
    return palette.color(QPalette::Active, look.filled ? QPalette::HighlightedText : QPalette::WindowText);
}

void drawButton(QPainter& painter, const QRect& place, const QWidget& widget, const Look& look)
{
    const Measures measures(widget);
    const QPalette& palette = widget.palette();
    if (!look.filled || !look.enabled)
        return drawRounded(
            painter, place, measures.cornerRadius(), plainButtonGround(palette, look), frameOf(widget, look));
    const QColor ground = filledButtonGround(palette, look);
    drawRounded(
        painter, place, measures.cornerRadius(), ground, { colourOf(Ink::Focus, palette), measures.hairline() });
    if (!look.focused)
        return;
    const int inset = measures.focusFrame();
    drawRounded(painter, place.adjusted(inset, inset, -inset, -inset), measures.cornerRadius() - inset / 2.0, {},
        { buttonInk(palette, look), measures.focusFrame() });
}

namespace {

void drawTick(QPainter& painter, const QRectF& place)
{
    const auto point = [&](double x, double y) {
        return QPointF(place.left() + x * place.width(), place.top() + y * place.height());
    };
    painter.drawPolyline(QPolygonF { point(0.24, 0.52), point(0.43, 0.70), point(0.77, 0.32) });
}

void drawShape(QPainter& painter, const QRectF& place, Mark mark, double radius)
{
    if (mark == Mark::Option)
        painter.drawEllipse(place);
    else
        painter.drawRoundedRect(place, radius, radius);
}

// A thin round line looks paler than a straight one.
Edge markEdge(const QWidget& widget, Mark mark, const Look& look)
{
    const QPalette& palette = widget.palette();
    if (look.checked && look.enabled)
        return { colourOf(Ink::Focus, palette), Measures(widget).hairline() };
    Edge edge = frameOf(widget, { .enabled = look.enabled });
    if (mark == Mark::Option && look.enabled && !isFlat(palette))
        edge.colour = colourOf(Ink::Quiet, palette);
    return edge;
}

QPen roundPen(const QColor& colour, double width)
{
    return { colour, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin };
}

}

void drawChoice(QPainter& painter, const QRect& place, const QWidget& widget, Mark mark, const Look& look)
{
    const Kept kept(painter);
    const Measures measures(widget);
    const QPalette& palette = widget.palette();
    const bool strong = look.checked && look.enabled;
    const Edge edge = markEdge(widget, mark, look);
    painter.setPen(edgePen(edge));
    painter.setBrush(strong ? colourOf(Ink::Highlight, palette)
            : look.pressed  ? colourOf(Ink::SelectionTint, palette)
                            : fieldGround(palette, { .enabled = look.enabled }));
    const double inset = edge.width / 2.0;
    const QRectF shape = QRectF(place).adjusted(inset, inset, -inset, -inset);
    drawShape(painter, shape, mark, measures.cornerRadius() - inset);
    if (!look.checked)
        return;
    const QColor ink = strong ? palette.color(QPalette::Active, QPalette::HighlightedText)
                              : palette.color(QPalette::Disabled, QPalette::WindowText);
    if (mark == Mark::Check) {
        painter.setPen(roundPen(ink, 0.11 * place.width()));
        painter.setBrush(Qt::NoBrush);
        return drawTick(painter, shape);
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(ink);
    const double dot = 0.17 * place.width();
    painter.drawEllipse(shape.center(), dot, dot);
}

void drawFocus(QPainter& painter, const QRect& place, const QWidget& widget)
{
    const Measures measures(widget);
    drawRounded(
        painter, place, measures.cornerRadius(), {}, { colourOf(Ink::Focus, widget.palette()), measures.focusFrame() });
}

namespace {

void drawChevron(QPainter& painter, const QPointF& centre, double half, int direction)
{
    const double depth = half / 2 * direction;
    painter.drawPolyline(
        QPolygonF { centre + QPointF(-half, -depth), centre + QPointF(0, depth), centre + QPointF(half, -depth) });
}

void drawCross(QPainter& painter, const QPointF& centre, double half)
{
    painter.drawLine(centre + QPointF(-half, -half), centre + QPointF(half, half));
    painter.drawLine(centre + QPointF(-half, half), centre + QPointF(half, -half));
}

void drawMagnifier(QPainter& painter, const QPointF& centre, double radius)
{
    const QPointF lens = centre - QPointF(radius / 4, radius / 4);
    painter.drawEllipse(lens, radius, radius);
    painter.drawLine(lens + QPointF(0.71 * radius, 0.71 * radius), lens + QPointF(1.7 * radius, 1.7 * radius));
}

}

void drawSymbol(QPainter& painter, const QRect& place, const QWidget& widget, Symbol symbol, const QColor& colour)
{
    const Kept kept(painter);
    const int em = Measures(widget).em();
    painter.setPen(roundPen(colour, std::max(1.2, em / 13.0)));
    painter.setBrush(Qt::NoBrush);
    const QPointF centre = QRectF(place).center();
    switch (symbol) {
    case Symbol::ChevronDown:
        return drawChevron(painter, centre, 0.23 * em, 1);
    case Symbol::ChevronUp:
        return drawChevron(painter, centre, 0.23 * em, -1);
    case Symbol::Cross:
        return drawCross(painter, centre, 0.17 * em);
    case Symbol::Magnifier:
        return drawMagnifier(painter, centre, 0.22 * em);
    }
}

}
