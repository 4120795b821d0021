#include "qt/course/AsthmaLayout.h"

#include "toolkit/Measures.h"
#include "toolkit/QtText.h"

#include <QFontMetrics>

#include <algorithm>

namespace health {

namespace {

constexpr int Rows = static_cast<int>(AsthmaReading::LungValues);
// In ems.
constexpr double LowestRow = 3.15;
constexpr double HighestRow = 6;
constexpr double RowPadding = 1.02; // above the highest and below the lowest point, for its label
constexpr double BandGap = 0.3;
constexpr double BandHeight = 1.12;
constexpr double TickHeight = 0.2;
constexpr double HalfColumn = 0.55;
constexpr double NarrowestPlot = 14; // the severity in words gives way to it

int lineOf(const QFont& font) { return QFontMetrics(font).height(); }

int widthOf(const QFont& font, TextView text) { return QFontMetrics(font).horizontalAdvance(toQString(text)); }

}

AsthmaLayout::AsthmaLayout(const AsthmaData& data, const QRect& place, const CourseLook& look)
    : m_data(data)
    , m_place(place)
    , m_em(Measures(look.font).em())
    , m_gap(Measures(look.font).units(2))
    , m_halfColumn(Measures(look.font).ems(HalfColumn))
    , m_dateLine(lineOf(scaled(look.font, TypeSize::ChartDate)))
{
    findRanges();
    const int spare = (place.height() - heightFor(data, look)) / Rows;
    const int lowest = qRound(LowestRow * m_em);
    m_rowHeight = std::clamp(lowest + spare, lowest, qRound(HighestRow * m_em));
    divideWidth(look);
    placeReadings();
}

int AsthmaLayout::heightFor(const AsthmaData& data, const CourseLook& look)
{
    const int em = Measures(look.font).em();
    const int dates = lineOf(scaled(look.font, TypeSize::ChartDate));
    const int due = data.due ? lineOf(scaled(look.font, TypeSize::Note)) + qRound(BandGap * em) : 0;
    return Rows * qRound(LowestRow * em) + qRound((BandGap + BandHeight + TickHeight) * em) + dates + due;
}

void AsthmaLayout::findRanges()
{
    for (const AsthmaReading& reading : m_data.readings()) {
        for (std::size_t lung = 0; lung < m_ranges.size(); ++lung) {
            if (!reading.lung[lung])
                continue;
            Range& range = m_ranges[lung];
            const double value = *reading.lung[lung];
            range.low = range.isEmpty ? value : std::min(range.low, value);
            range.high = range.isEmpty ? value : std::max(range.high, value);
            range.isEmpty = false;
        }
    }
}

QString AsthmaLayout::range(std::size_t lung) const
{
    const Range& range = m_ranges[lung];
    if (range.isEmpty)
        return {};
    const Text low = chartNumber(range.low);
    const Text high = chartNumber(range.high);
    return toQString(low == high ? low : low + L" to " + high);
}

int AsthmaLayout::captionWidth(const CourseLook& look) const
{
    int width = widthOf(look.font, L"Severity");
    for (std::size_t lung = 0; lung < m_ranges.size(); ++lung) {
        width = std::max({ width, widthOf(look.font, AsthmaReading::Captions[lung]),
            widthOf(scaled(look.font, TypeSize::ChartDate), toText(range(lung))) });
    }
    return width;
}

int AsthmaLayout::valueWidth(const CourseLook& look) const
{
    if (!m_data.selected)
        return 0;
    const QFont large = semibold(scaled(look.font, TypeSize::DetailsHeading));
    const QFont small = scaled(look.font, TypeSize::ChartNumber);
    int width = 0;
    for (std::size_t lung = 0; lung < m_ranges.size(); ++lung) {
        const auto& value = m_data.readings()[*m_data.selected].lung[lung];
        if (!value)
            continue;
        const Text change = lungChange(m_data.readings(), *m_data.selected, lung);
        width = std::max(width, widthOf(large, chartNumber(*value)) + m_gap + widthOf(small, change));
    }
    return width;
}

void AsthmaLayout::divideWidth(const CourseLook& look)
{
    const int left = m_place.left() + captionWidth(look) + m_gap;
    const int values = valueWidth(look);
    int right = std::max(values, widthOf(scaled(look.font, TypeSize::ChartDate), L"00/00/00") / 2);
    if (m_data.selected) {
        const int severity =
            widthOf(semibold(scaled(look.font, TypeSize::ChartNumber)), m_data.readings()[*m_data.selected].severity);
        m_severityFits = m_place.right() - left - m_gap - severity >= qRound(NarrowestPlot * m_em);
        if (m_severityFits)
            right = std::max(right, severity);
    }
    const int edge = std::max(left + 2 * m_halfColumn, m_place.right() - m_gap - right);
    m_plot = QRect(QPoint(left, m_place.top()), QPoint(edge, m_place.top() + Rows * m_rowHeight - 1));
}

// Times are drawn to scale; readings of a single moment lie in the middle.
void AsthmaLayout::placeReadings()
{
    const auto& readings = m_data.readings();
    if (readings.empty())
        return;
    const Moment first = readings.front().date.start;
    const double whole = static_cast<double>((readings.back().date.start - first).count());
    const int left = m_plot.left() + m_halfColumn;
    const int width = std::max(0, m_plot.width() - 2 * m_halfColumn);
    m_x.reserve(static_cast<qsizetype>(readings.size()));
    for (const AsthmaReading& reading : readings) {
        const double part = whole > 0 ? static_cast<double>((reading.date.start - first).count()) / whole : 0.5;
        m_x.append(left + qRound(part * width));
    }
}

QRect AsthmaLayout::row(std::size_t lung) const
{
    return { m_plot.left(), m_plot.top() + static_cast<int>(lung) * m_rowHeight, m_plot.width(), m_rowHeight };
}

QPoint AsthmaLayout::point(std::size_t lung, std::size_t reading) const
{
    const QRect place = row(lung);
    const Range& range = m_ranges[lung];
    const double height = place.height() - 2 * RowPadding * m_em;
    const double part =
        range.high > range.low ? (*m_data.readings()[reading].lung[lung] - range.low) / (range.high - range.low) : 0.5;
    return { x(reading), qRound(place.bottom() - RowPadding * m_em - part * height) };
}

QRect AsthmaLayout::band() const
{
    return { m_plot.left(), m_plot.bottom() + 1 + qRound(BandGap * m_em), m_plot.width(), qRound(BandHeight * m_em) };
}

QRect AsthmaLayout::bandPart(std::size_t first, std::size_t last) const
{
    QRect part = band();
    if (first > 0)
        part.setLeft((x(first - 1) + x(first) + 1) / 2);
    if (last + 1 < m_data.readings().size())
        part.setRight((x(last) + x(last + 1) + 1) / 2 - 1);
    if (part.width() < 1)
        part.setWidth(1);
    return part;
}

int AsthmaLayout::datesTop() const { return band().bottom() + 1 + qRound(TickHeight * m_em); }

int AsthmaLayout::dueTop() const { return datesTop() + m_dateLine + qRound(BandGap * m_em); }

}
