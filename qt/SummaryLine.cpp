#include "qt/SummaryLine.h"

#include "qt/RunFlow.h"
#include "qt/ToneLabel.h"
#include "toolkit/Announcer.h"
#include "toolkit/Inks.h"
#include "toolkit/Measures.h"
#include "toolkit/QtText.h"

#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

namespace health {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype LongestValue = 60; // characters, in the row

bool isSame(const SaveSummary& one, const SaveSummary& other)
{
    const auto same = [](const SaveSummary::Part& a, const SaveSummary::Part& b) {
        return a.caption == b.caption && a.value == b.value && a.isChanged == b.isChanged;
    };
    return one.surprises == other.surprises && std::ranges::equal(one.parts, other.parts, same);
}

// The value in one line.
QString inOneLine(const Text& value) { return toQString(value).simplified(); }

QString shortened(const QString& value)
{
    return value.size() <= LongestValue ? value : value.left(LongestValue - 1).trimmed() + u'…';
}

QString captionOf(const SaveSummary::Part& part)
{
    return part.caption.empty() ? QString() : toQString(part.caption) + u'=';
}

bool isWorthARow(const SaveSummary::Part& part) { return !part.value.empty() || part.isChanged; }

}

SummaryLine::SummaryLine(std::function<void(bool isOpen)> toggled)
    : m_toggled(std::move(toggled))
{
    setFont(scaled(font(), TypeSize::Saved));
    setTextFormat(Qt::PlainText);
    setWordWrap(true); // else the label gives up its height for a width with each text
    setAccessibleName(u"Will be saved"_s);
    setToolTip(u"Show all values (F2)"_s);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    hide();
}

void SummaryLine::show(const SaveSummary& summary, const QString& fault)
{
    if (isSame(summary, m_summary) && fault == m_fault)
        return;
    // Not again for each letter that changes a sentence.
    const bool isNew = summary.surprises.size() > m_summary.surprises.size();
    m_summary = summary;
    m_fault = fault;
    if (isNew)
        announce(*this, toQString(m_summary.surprises.back()));
    setAccessibleDescription(spoken());
    setVisible(!m_summary.parts.empty() || !m_summary.surprises.empty() || !fault.isEmpty());
    updateGeometry();
    update();
}

void SummaryLine::toggle()
{
    if (m_summary.parts.empty())
        return;
    m_isOpen = !m_isOpen;
    setAccessibleDescription(spoken());
    if (m_isOpen)
        announce(*this, spoken());
    updateGeometry();
    update();
    m_toggled(m_isOpen);
}

void SummaryLine::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        toggle();
}

QString SummaryLine::opening() const { return m_fault.isEmpty() ? u"Will be saved:"_s : u"Check first:"_s; }

QString SummaryLine::spoken() const
{
    QStringList texts;
    if (!m_fault.isEmpty())
        texts.append(u"Check first: "_s + m_fault);
    else
        for (const SaveSummary::Part& part : m_summary.parts) {
            if (isWorthARow(part))
                texts.append(captionOf(part) + (part.value.empty() ? u"(empty)"_s : inOneLine(part.value)));
        }
    for (const Text& surprise : m_summary.surprises)
        texts.append(toQString(surprise));
    return texts.join(u"; "_s);
}

// In the row, only values that were cleared are shown empty; in the list, each value has its line.
RunFlow SummaryLine::content() const
{
    const QColor quiet = colourOf(Ink::Quiet, palette());
    const QColor plain = colourOf(Ink::Words, palette());
    RunFlow flow;
    if (!m_fault.isEmpty()) {
        flow.add({ { { m_fault, font(), plain } } });
        if (!m_isOpen)
            return flow;
    }
    const auto isShown = [this](const SaveSummary::Part& part) { return m_isOpen || isWorthARow(part); };
    const auto shownParts = std::ranges::count_if(m_summary.parts, isShown);
    if (shownParts == 0)
        flow.add({ { { u"nothing has been entered"_s, font(), plain } } });
    std::ptrdiff_t shown = 0;
    for (const SaveSummary::Part& part : m_summary.parts) {
        if (!isShown(part))
            continue;
        const QString value = inOneLine(part.value);
        const TextRun caption { captionOf(part), font(), quiet };
        const bool isLast = ++shown == shownParts;
        RunFlow::Part set { { caption }, m_isOpen };
        if (value.isEmpty())
            set.runs.append({ u"(empty)"_s, part.isChanged ? semibold(font()) : font(), quiet });
        else
            set.runs.append({ m_isOpen ? value : shortened(value), part.isChanged ? semibold(font()) : font(), plain });
        if (!m_isOpen && !isLast)
            set.runs.append({ u"; "_s, font(), quiet });
        flow.add(std::move(set));
    }
    return flow;
}

RunFlow SummaryLine::surprises() const
{
    RunFlow flow;
    for (const Text& surprise : m_summary.surprises)
        flow.add({ { { toQString(surprise), font(), colourOf(Ink::Caution, palette()) } }, true });
    return flow;
}

int SummaryLine::indent() const { return fontMetrics().horizontalAdvance(opening() + u"  "_s); }

int SummaryLine::lineHeight() const { return Measures(*this).em(); }

QSize SummaryLine::sizeHint() const { return { indent(), lineHeight() }; }

QSize SummaryLine::minimumSizeHint() const { return { 0, isHidden() ? 0 : lineHeight() }; }

int SummaryLine::heightForWidth(int width) const
{
    const int inside = width - indent();
    return content().heightFor(inside, lineHeight()) + surprises().heightFor(inside, lineHeight());
}

void SummaryLine::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    RunFlow words;
    words.add({ { { opening(), font(), colourOf(Ink::Quiet, palette()) } } });
    words.draw(painter, {}, width(), lineHeight());
    const int inside = width() - indent();
    const RunFlow row = content();
    row.draw(painter, { indent(), 0 }, inside, lineHeight());
    surprises().draw(painter, { indent(), row.heightFor(inside, lineHeight()) }, inside, lineHeight());
}

}
