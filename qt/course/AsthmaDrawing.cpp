#include "qt/course/AsthmaDrawing.h"

#include "qt/course/ValueLabels.h"
#include "toolkit/Inks.h"
#include "toolkit/Measures.h"
#include "toolkit/QtText.h"

#include <QFontMetrics>

#include <algorithm>

namespace health {

using namespace Qt::StringLiterals;

namespace {

Ink severityInk(int level) { return static_cast<Ink>(static_cast<int>(Ink::Severity1) + level - 1); }

// A text on one line, its middle at the height of `middle`.
void drawAt(
    QPainter& painter, const QFont& font, const QColor& colour, QPoint middle, Qt::Alignment side, const QString& text)
{
    const QFontMetrics metrics(font);
    const int width = metrics.horizontalAdvance(text);
    const int left = side & Qt::AlignRight ? middle.x() - width
        : side & Qt::AlignHCenter          ? middle.x() - width / 2
                                           : middle.x();
    painter.setFont(font);
    painter.setPen(colour);
    painter.drawText(QPoint(left, middle.y() + (metrics.ascent() - metrics.descent()) / 2), text);
}

QString axisDate(const RecordDate& date, bool isWithinOneDay)
{
    if (isWithinOneDay && date.precision == RecordDate::Precision::Minute)
        return toQString(date.text().substr(11));
    QString day = toQString(date.dayText());
    day.remove(day.size() - 4, 2); // the century
    return date.precision == RecordDate::Precision::Year ? toQString(date.dayText()) : day;
}

}

AsthmaDrawing::AsthmaDrawing(
    const AsthmaData& data, const AsthmaLayout& layout, const CourseLook& look, QPainter& painter)
    : m_data(data)
    , m_layout(layout)
    , m_look(look)
    , m_painter(painter)
    , m_number(scaled(look.font, TypeSize::ChartNumber))
    , m_date(scaled(look.font, TypeSize::ChartDate))
    , m_hairline(Measures(look.font).hairline())
    , m_dot(Measures(look.font).em() / 9.0)
{
}

void AsthmaDrawing::draw()
{
    m_painter.setRenderHint(QPainter::Antialiasing);
    drawSelectedColumn();
    for (std::size_t lung = 0; lung < AsthmaReading::LungValues; ++lung) {
        drawCaptions(lung);
        drawCurve(lung);
        drawSelectedValue(lung);
    }
    drawSeverities();
    drawDates();
    drawDue();
}

QColor AsthmaDrawing::selectedInk() const
{
    return colourOf(m_data.isOfCurrentVisit ? Ink::Visit : Ink::Words, m_look.palette);
}

void AsthmaDrawing::drawSelectedColumn()
{
    if (!m_data.selected)
        return;
    const int x = m_layout.x(*m_data.selected);
    const QRect column(QPoint(x - m_layout.halfColumn(), m_layout.plot().top()),
        QPoint(x + m_layout.halfColumn(), m_layout.datesTop() - 1));
    m_painter.fillRect(column, colourOf(Ink::SelectionTint, m_look.palette));
}

void AsthmaDrawing::drawCaptions(std::size_t lung)
{
    const QRect row = m_layout.row(lung);
    const QString range = m_layout.range(lung);
    const QFontMetrics caption(m_look.font);
    const int below = range.isEmpty() ? 0 : QFontMetrics(m_date).height();
    const QPoint middle(m_layout.captionsRight(), row.center().y() - below / 2);
    drawAt(m_painter, m_look.font, colourOf(Ink::Words, m_look.palette), middle, Qt::AlignRight,
        toQString(AsthmaReading::Captions[lung]));
    drawAt(m_painter, m_date, colourOf(Ink::Quiet, m_look.palette), middle + QPoint(0, (caption.height() + below) / 2),
        Qt::AlignRight, range);
    if (lung > 0)
        m_painter.fillRect(
            QRect(row.topLeft(), QSize(row.width(), m_hairline)), colourOf(Ink::Hairline, m_look.palette));
}

bool AsthmaDrawing::isCrowded() const
{
    return m_layout.plot().width() < static_cast<double>(m_data.readings().size()) * 4 * m_dot;
}

void AsthmaDrawing::drawCurve(std::size_t lung)
{
    // Smoothing hundreds of steep lines takes longer than all the rest and shows nothing.
    m_painter.setRenderHint(QPainter::Antialiasing, !isCrowded());
    m_painter.setPen(QPen(colourOf(Ink::Quiet, m_look.palette), isCrowded() ? m_hairline : 1.3 * m_hairline));
    QList<std::size_t> drawn;
    QList<QPoint> curve;
    for (const auto& [first, last] : lungRuns(m_data.readings(), lung)) {
        const qsizetype start = curve.size();
        for (std::size_t i = first; i <= last; ++i) {
            drawn.append(i);
            curve.append(m_layout.point(lung, i));
        }
        m_painter.drawPolyline(curve.constData() + start, static_cast<int>(curve.size() - start));
    }
    m_painter.setRenderHint(QPainter::Antialiasing);
    drawDots(lung, drawn);
    drawLabels(lung, drawn, curve);
}

// Where the readings lie too close together, only dots that no line shows, and those of the extremes.
void AsthmaDrawing::drawDots(std::size_t lung, const QList<std::size_t>& readings)
{
    const auto& all = m_data.readings();
    for (const std::size_t i : readings) {
        const bool alone = (i == 0 || !all[i - 1].lung[lung]) && (i + 1 == all.size() || !all[i + 1].lung[lung]);
        const double value = *all[i].lung[lung];
        const bool extreme = value == m_layout.lowest(lung) || value == m_layout.highest(lung);
        if (!isSelected(i) && (!isCrowded() || alone || extreme))
            drawDot(m_layout.point(lung, i), false);
    }
    if (m_data.selected && all[*m_data.selected].lung[lung])
        drawDot(m_layout.point(lung, *m_data.selected), true);
}

void AsthmaDrawing::drawDot(QPoint at, bool selected)
{
    const double radius = selected ? 2 * m_dot : m_dot;
    const QPalette& palette = m_look.palette;
    m_painter.setPen(QPen(palette.color(QPalette::Active, QPalette::Base), m_hairline));
    m_painter.setBrush(selected ? selectedInk() : colourOf(Ink::Quiet, palette));
    m_painter.drawEllipse(QPointF(at), radius + m_hairline / 2.0, radius + m_hairline / 2.0);
    m_painter.setBrush(Qt::NoBrush);
}

void AsthmaDrawing::drawLabels(std::size_t lung, const QList<std::size_t>& readings, const QList<QPoint>& curve)
{
    const auto& all = m_data.readings();
    const auto byHeight = [](const QPoint& one, const QPoint& other) { return one.y() < other.y(); };
    const auto [highest, lowest] = std::minmax_element(curve.begin(), curve.end(), byHeight);
    QList<LabelledPoint> wanted;
    for (qsizetype i = 0; i < readings.size(); ++i) {
        const std::size_t reading = readings.at(i);
        const auto isHigher = [&](qsizetype other) { return curve.at(other).y() < curve.at(i).y(); };
        const bool end = i == 0 || i + 1 == curve.size();
        const bool valley =
            curve.size() > 1 && (i == 0 || isHigher(i - 1)) && (i + 1 == curve.size() || isHigher(i + 1));
        const bool extreme = &curve.at(i) == &*highest || &curve.at(i) == &*lowest;
        // The large number at the right is the label of the selected last reading.
        if (!isSelected(reading) || reading + 1 < all.size())
            wanted.append({ toQString(chartNumber(*all[reading].lung[lung])), i, valley,
                end || extreme || isSelected(reading), qRound((isSelected(reading) ? 3.2 : 2.4) * m_dot) });
    }
    QRect room = m_layout.row(lung);
    room.setLeft(m_layout.captionsRight());
    const QFont strong = semibold(m_number);
    for (const ValueLabel& label : placedLabels(wanted, curve, room, strong)) {
        const bool selected = isSelected(readings.at(label.point));
        if (label.isOnCurve && !selected)
            m_painter.fillRect(label.place, m_look.palette.color(QPalette::Active, QPalette::Base));
        m_painter.setFont(selected ? strong : m_number);
        m_painter.setPen(selected ? selectedInk() : colourOf(Ink::Quiet, m_look.palette));
        const int width = m_painter.fontMetrics().horizontalAdvance(label.text);
        m_painter.drawText(label.place.center().x() - width / 2, label.place.bottom(), label.text);
    }
}

void AsthmaDrawing::drawSelectedValue(std::size_t lung)
{
    const auto& readings = m_data.readings();
    if (!m_data.selected || !readings[*m_data.selected].lung[lung])
        return;
    const QFont large = semibold(scaled(m_look.font, TypeSize::DetailsHeading));
    const QString value = toQString(chartNumber(*readings[*m_data.selected].lung[lung]));
    const QPoint middle(m_layout.valuesLeft(), m_layout.point(lung, *m_data.selected).y());
    drawAt(m_painter, large, selectedInk(), middle, Qt::AlignLeft, value);
    const int width = QFontMetrics(large).horizontalAdvance(value) + Measures(m_look.font).units(2);
    drawAt(m_painter, m_number, colourOf(Ink::Quiet, m_look.palette), middle + QPoint(width, 0), Qt::AlignLeft,
        toQString(lungChange(readings, *m_data.selected, lung)));
}

// --- Severity ---

// In words, else shorter without ambiguity, else as its number.
QString AsthmaDrawing::severityIn(int width, std::size_t reading, int level) const
{
    const QString words = toQString(m_data.readings()[reading].severity);
    const bool isUnique = level > 2; // "Mild" is not
    for (const QString& text : { words, isUnique ? words.section(u' ', 0, 0) : QString(), QString::number(level) }) {
        if (!text.isEmpty() && QFontMetrics(m_number).horizontalAdvance(text) + 2 * m_hairline <= width)
            return text;
    }
    return {};
}

void AsthmaDrawing::drawSeverities()
{
    const QPalette& palette = m_look.palette;
    const int middle = m_layout.band().center().y();
    drawAt(m_painter, m_look.font, colourOf(Ink::Words, palette), { m_layout.captionsRight(), middle }, Qt::AlignRight,
        u"Severity"_s);
    for (const SeverityRun& run : severityRuns(m_data.readings())) {
        QRect part = m_layout.bandPart(run.first, run.last);
        if (run.last + 1 < m_data.readings().size() && part.width() > 4 * m_hairline)
            part.setWidth(part.width() - m_hairline);
        const Ink ink = severityInk(run.level);
        m_painter.fillRect(part, colourOf(ink, palette));
        drawAt(m_painter, m_number, wordsOn(ink, palette), { part.center().x(), middle }, Qt::AlignHCenter,
            severityIn(part.width(), run.first, run.level));
    }
    if (m_data.selected && m_layout.hasRoomForSeverity())
        drawAt(m_painter, semibold(m_number), selectedInk(), { m_layout.valuesLeft(), middle }, Qt::AlignLeft,
            toQString(m_data.readings()[*m_data.selected].severity));
}

// --- Dates ---

void AsthmaDrawing::drawDates()
{
    const auto& readings = m_data.readings();
    const QRect band = m_layout.band();
    const int line = QFontMetrics(m_date).height();
    const int middle = m_layout.datesTop() + line / 2;
    const bool oneDay = dateOf(readings.front().date.start) == dateOf(readings.back().date.start);
    QList<QRect> taken;
    const auto put = [&](std::size_t i) {
        const bool selected = isSelected(i);
        const QFont font = selected ? semibold(m_date) : m_date;
        const QString text = axisDate(readings[i].date, oneDay && readings.size() > 1);
        const int width = QFontMetrics(font).horizontalAdvance(text);
        const int left = std::min(m_layout.x(i) - width / 2, m_layout.place().right() - width);
        const QRect place(left, m_layout.datesTop(), width, line);
        const QRect wide = place.adjusted(-line / 3, 0, line / 3, 0);
        if (std::any_of(taken.begin(), taken.end(), [&](const QRect& other) { return other.intersects(wide); }))
            return;
        taken.append(place);
        drawAt(m_painter, font, selected ? selectedInk() : colourOf(Ink::Quiet, m_look.palette),
            { place.center().x(), middle }, Qt::AlignHCenter, text);
    };
    if (m_data.selected)
        put(*m_data.selected);
    put(0);
    put(readings.size() - 1);
    int lastTick = band.left() - band.height();
    for (std::size_t i = 0; i < readings.size(); ++i) {
        put(i);
        if (m_layout.x(i) - lastTick < m_layout.halfColumn() / 2)
            continue;
        lastTick = m_layout.x(i);
        m_painter.fillRect(QRect(lastTick, band.bottom() + 1, m_hairline, m_layout.datesTop() - band.bottom() - 1),
            colourOf(Ink::Quiet, m_look.palette));
    }
}

void AsthmaDrawing::drawDue()
{
    if (!m_data.due)
        return;
    const QFont note = scaled(m_look.font, TypeSize::Note);
    const QString text =
        u"Calculated Date Due %1 \u00B7 %2"_s.arg(toQString(m_data.due->date), toQString(m_data.due->words));
    const Ink ink = m_data.due->isOver ? Ink::Caution : Ink::Quiet;
    const int room = m_layout.place().right() - QFontMetrics(note).horizontalAdvance(text);
    const int left = std::max(m_layout.place().left(), std::min(m_layout.plot().left(), room));
    drawAt(m_painter, note, colourOf(ink, m_look.palette),
        { left, m_layout.dueTop() + QFontMetrics(note).height() / 2 }, Qt::AlignLeft, text);
}

}
