#include "qt/course/AsthmaPicture.h"

#include "qt/course/AsthmaDrawing.h"
#include "toolkit/Measures.h"
#include "toolkit/QtText.h"

#include <QPainter>

namespace health {

using namespace Qt::StringLiterals;

AsthmaPicture::AsthmaPicture(const CourseSource& source)
{
    m_data.course = asthmaCourse(source.records);
    m_data.due = dueDistance(source.registryDue, source.now);
    for (std::size_t i = 0; i < m_data.readings().size(); ++i) {
        if (static_cast<int>(m_data.readings()[i].record) == source.selected)
            m_data.selected = i;
    }
    m_data.isOfCurrentVisit =
        m_data.selected && source.records[m_data.readings()[*m_data.selected].record].isOfCurrentVisit;
}

int AsthmaPicture::heightFor(int, const CourseLook& look) const { return AsthmaLayout::heightFor(m_data, look); }

void AsthmaPicture::draw(QPainter& painter, const QRect& place, const CourseLook& look) const
{
    painter.save();
    AsthmaDrawing(m_data, AsthmaLayout(m_data, place, look), look, painter).draw();
    painter.restore();
}

QList<CoursePoint> AsthmaPicture::points(const QRect& place, const CourseLook& look) const
{
    const AsthmaLayout layout(m_data, place, look);
    const auto& readings = m_data.readings();
    const int side = layout.halfColumn();
    const auto textOf = [&](TextView caption, std::size_t i, const Text& value) {
        return toQString(Text(caption) + L" on " + readings[i].date.text() + L": " + value);
    };
    QList<CoursePoint> points;
    for (std::size_t lung = 0; lung < AsthmaReading::LungValues; ++lung) {
        for (std::size_t i = 0; i < readings.size(); ++i) {
            if (!readings[i].lung[lung])
                continue;
            const Text change = lungChange(readings, i, lung);
            const Text value = readings[i].lungTexts[lung] + (change.empty() ? L"" : L" (" + change + L")");
            points.append({ QRect(layout.point(lung, i) - QPoint(side, side), QSize(2 * side, 2 * side)),
                textOf(AsthmaReading::Captions[lung], i, value), static_cast<int>(readings[i].record) });
        }
    }
    for (std::size_t i = 0; i < readings.size(); ++i) {
        if (!readings[i].severity.empty())
            points.append({ layout.bandPart(i, i), textOf(L"Severity", i, readings[i].severity),
                static_cast<int>(readings[i].record) });
    }
    return points;
}

CourseTable AsthmaPicture::table() const { return asthmaTable(m_data.course, m_data.due); }

}
