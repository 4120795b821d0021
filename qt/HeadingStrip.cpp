#include "qt/HeadingStrip.h"

#include "qt/RunFlow.h"
#include "qt/ToneLabel.h"
#include "toolkit/Announcer.h"
#include "toolkit/Inks.h"
#include "toolkit/Measures.h"
#include "toolkit/QtText.h"

#include <QPainter>

#include <algorithm>

namespace health {

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView Separator = u"  ·  ";
// Keeps the room of the bar before the visit.
constexpr QStringView BarRoom = u"\u2003";

bool isSame(const FormHeading& one, const FormHeading& other)
{
    return one.name == other.name && one.details == other.details && one.visit == other.visit
        && one.visitKind == other.visitKind && one.record == other.record && one.warning == other.warning;
}

// Dark enough for white letters in every palette.
QColor warningGround() { return colourOf(Ink::Error, QPalette(Qt::black, Qt::white)); }

// What a screen reader speaks; the bar of the visit becomes a word.
QString spoken(const FormHeading& heading)
{
    if (!heading.warning.empty())
        return toQString(heading.warning);
    QStringList parts { toQString(heading.name) };
    for (const Text& detail : heading.details)
        parts.append(toQString(detail));
    if (!heading.visit.empty()) {
        const QString visit = toQString(heading.visit);
        parts.append(heading.visitKind == FormHeading::Visit::Current ? visit + u" (current visit)"_s : visit);
    }
    if (!heading.record.empty())
        parts.append(toQString(heading.record));
    return parts.join(u" · "_s);
}

}

// The parts of a heading as runs of text.
class HeadingStrip::Parts {
public:
    explicit Parts(const HeadingStrip& strip)
        : m_strip(strip)
    {
        const FormHeading& heading = strip.m_heading;
        if (!heading.warning.empty()) {
            addText(toQString(heading.warning), semibold(strip.font()), Qt::white);
            return;
        }
        addText(toQString(heading.name), semibold(strip.font()), colour(Ink::Words));
        for (const Text& detail : heading.details)
            addText(toQString(detail), strip.font(), colour(Ink::Words));
        if (!heading.visit.empty())
            addVisit(heading);
        if (!heading.record.empty())
            addText(toQString(heading.record), strip.font(), colour(Ink::Quiet));
    }

    RunFlow flow;

private:
    QColor colour(Ink ink) const { return colourOf(ink, m_strip.palette()); }

    void addText(const QString& text, const QFont& font, const QColor& colour)
    {
        if (!flow.isEmpty())
            flow.add({ { { Separator.toString(), m_strip.font(), this->colour(Ink::Quiet) } } });
        flow.add({ { { text, font, colour } } });
    }

    void addVisit(const FormHeading& heading)
    {
        const QString visit = toQString(heading.visit);
        if (heading.visitKind == FormHeading::Visit::Unknown) {
            addText(visit, m_strip.font(), colour(Ink::Quiet));
            return;
        }
        const bool isCurrent = heading.visitKind == FormHeading::Visit::Current;
        flow.add({ { { BarRoom.toString(), m_strip.font(), {} },
            { RunFlow::Bar.toString(), m_strip.font(), colour(isCurrent ? Ink::Visit : Ink::FieldFrame) },
            { visit, m_strip.font(), colour(isCurrent ? Ink::Visit : Ink::Words) } } });
    }

    const HeadingStrip& m_strip;
};

HeadingStrip::HeadingStrip()
{
    setTextFormat(Qt::PlainText);
    setWordWrap(true); // else the label gives up its height for a width with each text
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    hide();
}

void HeadingStrip::show(const FormHeading& heading)
{
    if (isSame(heading, m_heading))
        return;
    const bool isNewWarning = !heading.warning.empty() && heading.warning != m_heading.warning;
    m_heading = heading;
    setText(spoken(heading));
    setVisible(!heading.name.empty() || !heading.warning.empty());
    updateGeometry();
    update();
    if (isNewWarning)
        announce(*this, spoken(heading));
}

int HeadingStrip::lineHeight() const { return Measures(*this).em(); }

int HeadingStrip::padding() const { return Measures(*this).units(1.5); }

QSize HeadingStrip::sizeHint() const
{
    const int width = Parts(*this).flow.naturalWidth() + 2 * Measures(*this).formMargin();
    return { width, lineHeight() + 2 * padding() };
}

QSize HeadingStrip::minimumSizeHint() const { return { 0, isHidden() ? 0 : lineHeight() + 2 * padding() }; }

int HeadingStrip::heightForWidth(int width) const
{
    const int inside = width - 2 * Measures(*this).formMargin();
    return Parts(*this).flow.heightFor(inside, lineHeight()) + 2 * padding();
}

void HeadingStrip::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const bool warns = !m_heading.warning.empty();
    painter.fillRect(rect(), warns ? warningGround() : colourOf(Ink::HeaderStrip, palette()));
    const int hairline = Measures(*this).hairline();
    painter.fillRect(0, height() - hairline, width(), hairline, colourOf(Ink::Hairline, palette()));
    const int margin = Measures(*this).formMargin();
    Parts(*this).flow.draw(painter, { margin, padding() }, width() - 2 * margin, lineHeight());
}

}
