#pragma once

#include "qt/course/AsthmaLayout.h"

#include <QFont>
#include <QPainter>

namespace health {

// Draws the asthma picture once. Changes the painter.
class AsthmaDrawing {
public:
    // All must outlive the object.
    AsthmaDrawing(const AsthmaData& data, const AsthmaLayout& layout, const CourseLook& look, QPainter& painter);

    void draw();

private:
    void drawSelectedColumn();
    void drawCaptions(std::size_t lung);
    void drawCurve(std::size_t lung);
    void drawDots(std::size_t lung, const QList<std::size_t>& readings);
    void drawDot(QPoint at, bool selected);
    void drawLabels(std::size_t lung, const QList<std::size_t>& readings, const QList<QPoint>& curve);
    void drawSelectedValue(std::size_t lung);
    void drawSeverities();
    QString severityIn(int width, std::size_t reading, int level) const;
    void drawDates();
    void drawDue();
    // The readings lie too close together for a dot each.
    bool isCrowded() const;
    bool isSelected(std::size_t reading) const { return m_data.selected == reading; }
    QColor selectedInk() const;

    const AsthmaData& m_data;
    const AsthmaLayout& m_layout;
    const CourseLook& m_look;
    QPainter& m_painter;
    QFont m_number;
    QFont m_date;
    int m_hairline;
    double m_dot; // radius
};

}
