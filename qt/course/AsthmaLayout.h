#pragma once

#include "qt/course/CoursePicture.h"
#include "records/AsthmaCourse.h"

namespace health {

// What the asthma picture shows.
struct AsthmaData {
    AsthmaCourse course;
    std::optional<DueDistance> due;
    std::optional<std::size_t> selected; // among the course's readings
    bool isOfCurrentVisit = false; // the selected reading

    const std::vector<AsthmaReading>& readings() const { return course.readings; }
};

// Where the parts of the asthma picture lie: from top to bottom three curves, the band of severity, the dates, and the
// registry's date due; at the left the captions, at the right the selected values.
class AsthmaLayout {
public:
    AsthmaLayout(const AsthmaData& data, const QRect& place, const CourseLook& look);

    static int heightFor(const AsthmaData& data, const CourseLook& look);

    const QRect& place() const { return m_place; }
    // The curves and, with its rows, the time axis.
    const QRect& plot() const { return m_plot; }
    QRect row(std::size_t lung) const;
    QRect band() const;
    int datesTop() const;
    int dueTop() const;
    int captionsRight() const { return m_plot.left() - m_gap; }
    int valuesLeft() const { return m_plot.right() + m_gap; }
    bool hasRoomForSeverity() const { return m_severityFits; }
    // Half the width of the selected column.
    int halfColumn() const { return m_halfColumn; }

    int x(std::size_t reading) const { return m_x.at(static_cast<qsizetype>(reading)); }
    // Only for a reading that has the value.
    QPoint point(std::size_t lung, std::size_t reading) const;
    // From the middle between two readings to the next middle.
    QRect bandPart(std::size_t first, std::size_t last) const;
    // Empty without a value.
    QString range(std::size_t lung) const;
    double lowest(std::size_t lung) const { return m_ranges[lung].low; }
    double highest(std::size_t lung) const { return m_ranges[lung].high; }

private:
    struct Range {
        double low = 0;
        double high = 0;
        bool isEmpty = true;
    };

    void findRanges();
    void divideWidth(const CourseLook& look);
    void placeReadings();
    int captionWidth(const CourseLook& look) const;
    int valueWidth(const CourseLook& look) const;

    const AsthmaData& m_data;
    QRect m_place;
    QRect m_plot;
    QList<int> m_x;
    std::array<Range, AsthmaReading::LungValues> m_ranges;
    int m_em;
    int m_gap;
    int m_halfColumn;
    int m_dateLine;
    int m_rowHeight = 0;
    bool m_severityFits = false;
};

}
