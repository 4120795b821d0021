#include "qt/course/FunctionalLayout.h"

#include "toolkit/QtText.h"

#include <QFontMetrics>

#include <algorithm>

namespace health {

using namespace Qt::StringLiterals;

namespace {

constexpr double RowHeight = 1.17; // em
constexpr double CircleSize = 0.55; // em
constexpr std::size_t FewestSideBySide = 2; // assessments

}

QString shortDay(const RecordDate& date)
{
    QString day = toQString(date.dayText());
    return hasDay(date) ? day.remove(6, 2) : day;
}

FunctionalLayout::FunctionalLayout(const FunctionalCourse& course, int width, const CourseLook& look)
    : m_measures(look.font)
    , m_width(width)
    , m_assessments(course.assessments().size())
    , m_circle(m_measures.ems(CircleSize) | 1)
    , m_rowHeight(m_measures.ems(RowHeight))
    , m_blockHeight(m_rowHeight * static_cast<int>(Rows + 1))
{
    measureColumns(course, look);
    chooseColumns(width);
    addTexts(course, look);
    placeLegend(look);
}

void FunctionalLayout::measureColumns(const FunctionalCourse& course, const CourseLook& look)
{
    const QFontMetrics plain(look.font);
    const QFontMetrics strong(semibold(look.font));
    const QFontMetrics small(semibold(scaled(look.font, TypeSize::ChartDate)));
    m_namesWidth = plain.horizontalAdvance(u"independent"_s);
    for (std::size_t item = 0; item < InstrumentalItems; ++item)
        m_namesWidth = std::max(m_namesWidth, plain.horizontalAdvance(toQString(FunctionalCourse::itemName(item))));
    m_columnWidth = std::max(2 * m_circle + 4 * m_measures.u(), plain.horizontalAdvance(u"6 of 6"_s));
    int words = strong.horizontalAdvance(u"6 of 6"_s);
    for (const FunctionalCourse::Assessment& assessment : course.assessments()) {
        m_columnWidth = std::max(m_columnWidth, small.horizontalAdvance(shortDay(assessment.date)));
        for (const FunctionalCourse::Value& value : assessment.values)
            words = std::max(words, strong.horizontalAdvance(toQString(value.word)));
    }
    m_columnWidth += 2 * m_measures.u();
    m_lastWidth = words + 2 * m_circle + 6 * m_measures.u();
}

int FunctionalLayout::blockWidth(std::size_t columns) const
{
    return m_namesWidth + m_measures.captionGap() + static_cast<int>(columns - 1) * m_columnWidth + m_lastWidth;
}

void FunctionalLayout::chooseColumns(int width)
{
    m_columns = m_assessments;
    const auto fitSideBySide = [&] { return 2 * blockWidth(m_columns) + m_measures.groupGap() <= width; };
    while (m_columns > std::min(FewestSideBySide, m_assessments) && !fitSideBySide())
        --m_columns;
    m_isStacked = !fitSideBySide();
    if (!m_isStacked)
        return;
    m_columns = m_assessments;
    while (m_columns > 1 && blockWidth(m_columns) > width)
        --m_columns;
    if (blockWidth(m_columns) <= width)
        return;
    m_hasWords = false;
    m_lastWidth = m_columnWidth;
}

void FunctionalLayout::addTexts(const FunctionalCourse& course, const CourseLook& look)
{
    m_heading = phraseFlow({ { toQString(course.extent(m_columns)), {} } }, look);
    m_blocksTop = m_heading.heightFor(m_width, m_measures.em()) + m_measures.rowGap();
    m_note = noteFlow(toQString(course.note()), look);
}

void FunctionalLayout::placeLegend(const CourseLook& look)
{
    using enum LegendEntry::Mark;
    m_legend = { { Independent, u"Independent"_s, {} }, { NeedsHelp, u"Needs Help"_s, {} },
        { TotallyDependent, u"Totally Dependent"_s, {} }, { NeedsMoreHelp, u"needs more help than before"_s, {} },
        { NeedsLessHelp, u"needs less help than before"_s, {} }, { NotRecorded, u"not recorded, not counted"_s, {} } };
    const QFontMetrics metrics(scaled(look.font, TypeSize::Note));
    int left = 0;
    int top = 0;
    for (LegendEntry& entry : m_legend) {
        const int width = m_circle + m_measures.rowGap() + metrics.horizontalAdvance(entry.text);
        if (left > 0 && left + width > m_width) {
            left = 0;
            top += m_rowHeight;
        }
        entry.topLeft = { left, top };
        left += width + m_measures.groupGap();
    }
    m_legendHeight = top + m_rowHeight;
}

int FunctionalLayout::noteTop() const { return legendTop() + m_legendHeight; }

int FunctionalLayout::height() const
{
    return noteTop() + (m_note.isEmpty() ? 0 : m_note.heightFor(m_width, m_measures.em()));
}

QRect FunctionalLayout::block(std::size_t block) const
{
    const int index = static_cast<int>(block);
    const int width = blockWidth(m_columns);
    const int left = m_isStacked ? 0 : index * (width + m_measures.groupGap());
    const int top = m_blocksTop + (m_isStacked ? index * (m_blockHeight + m_measures.rowGap()) : 0);
    return { left, top, width, m_blockHeight };
}

QRect FunctionalLayout::title(std::size_t block) const
{
    const QRect whole = this->block(block);
    return { whole.left(), whole.top(), m_isStacked ? m_width : whole.width() + m_measures.u(), m_rowHeight };
}

QRect FunctionalLayout::row(std::size_t block, std::size_t row) const
{
    const QRect whole = this->block(block);
    return { whole.left(), whole.top() + static_cast<int>(row + 1) * m_rowHeight, whole.width(), m_rowHeight };
}

QRect FunctionalLayout::name(std::size_t block, std::size_t row) const
{
    const QRect whole = this->row(block, row);
    return { whole.left(), whole.top(), m_namesWidth, m_rowHeight };
}

QRect FunctionalLayout::cell(std::size_t block, std::size_t row, std::size_t assessment) const
{
    const QRect whole = this->row(block, row);
    const int column = static_cast<int>(assessment - firstAssessment());
    const int left = whole.left() + m_namesWidth + m_measures.captionGap() + column * m_columnWidth;
    return { left, whole.top(), isLast(assessment) ? m_lastWidth : m_columnWidth, m_rowHeight };
}

QRect FunctionalLayout::lastColumn(std::size_t block) const
{
    return cell(block, 0, m_assessments - 1).united(cell(block, Rows - 1, m_assessments - 1));
}

// In the last column with words, the circle stands at the left.
QRect FunctionalLayout::circleIn(const QRect& cell, std::size_t assessment) const
{
    QRect circle(0, 0, m_circle, m_circle);
    circle.moveCenter(cell.center());
    if (isLast(assessment) && m_hasWords)
        circle.moveLeft(cell.left() + 2 * m_measures.u());
    return circle;
}

QRect FunctionalLayout::arrowBeside(const QRect& circle) const
{
    return circle.translated(m_circle + m_measures.u(), 0);
}

int FunctionalLayout::wordsLeft(const QRect& cell) const { return cell.left() + 2 * m_circle + 4 * m_measures.u(); }

}
