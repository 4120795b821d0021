#pragma once

#include "qt/course/ChartText.h"
#include "records/FunctionalCourse.h"
#include "toolkit/Measures.h"

namespace health {

// An entry of the legend.
struct LegendEntry {
    enum class Mark {
        Independent,
        NeedsHelp,
        TotallyDependent,
        NeedsMoreHelp,
        NeedsLessHelp,
        NotRecorded,
    };

    Mark mark;
    QString text;
    QPoint topLeft; // relative to the legend
};

// Where the parts of the functional status picture lie. The blocks stand side by side; a narrow place drops the oldest
// assessments, and if it has no room for two of them, puts the blocks below each other.
class FunctionalLayout {
public:
    // The course must have an assessment.
    FunctionalLayout(const FunctionalCourse& course, int width, const CourseLook& look);

    const Measures& measures() const { return m_measures; }
    int height() const;

    // The newest `columns()` of the assessments are shown.
    std::size_t columns() const { return m_columns; }
    std::size_t firstAssessment() const { return m_assessments - m_columns; }
    bool isLast(std::size_t assessment) const { return assessment + 1 == m_assessments; }
    // Whether the last column has room for words.
    bool hasWords() const { return m_hasWords; }

    const RunFlow& heading() const { return m_heading; }
    const RunFlow& note() const { return m_note; }
    int noteTop() const;
    const QList<LegendEntry>& legend() const { return m_legend; }
    int legendTop() const { return m_blocksTop + blockRows() * (m_blockHeight + m_measures.rowGap()); }
    QRect block(std::size_t block) const;
    QRect title(std::size_t block) const;
    // Rows: 0 has the dates, then the items, then the counts.
    QRect row(std::size_t block, std::size_t row) const;
    QRect name(std::size_t block, std::size_t row) const;
    QRect cell(std::size_t block, std::size_t row, std::size_t assessment) const;
    // The last column of a block, from the dates to the counts.
    QRect lastColumn(std::size_t block) const;

    int circle() const { return m_circle; } // diameter
    // The place of the circle and of the arrow beside it, in a cell.
    QRect circleIn(const QRect& cell, std::size_t assessment) const;
    QRect arrowBeside(const QRect& circle) const;
    int wordsLeft(const QRect& cell) const;

    static constexpr std::size_t Rows = FunctionalCourse::BlockItems + 2;

private:
    void measureColumns(const FunctionalCourse& course, const CourseLook& look);
    void chooseColumns(int width);
    void addTexts(const FunctionalCourse& course, const CourseLook& look);
    void placeLegend(const CourseLook& look);
    int blockWidth(std::size_t columns) const;
    int blockRows() const { return m_isStacked ? 2 : 1; }

    Measures m_measures;
    int m_width;
    std::size_t m_assessments;
    std::size_t m_columns = 0;
    bool m_isStacked = false;
    bool m_hasWords = true;
    int m_circle;
    int m_namesWidth = 0;
    int m_columnWidth = 0;
    int m_lastWidth = 0;
    int m_rowHeight;
    int m_blockHeight;
    int m_blocksTop = 0;
    RunFlow m_heading;
    RunFlow m_note;
    QList<LegendEntry> m_legend;
    int m_legendHeight = 0;
};

// "06/10/26"; a year or a month without a day as it is.
QString shortDay(const RecordDate& date);

}
