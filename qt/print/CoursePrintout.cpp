#include "qt/print/CoursePrintout.h"

#include "qt/course/CourseOf.h"
#include "records/RecordFields.h"
#include "toolkit/QtText.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>

namespace health {

using namespace Qt::StringLiterals;

namespace {

constexpr int CellText = Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap;
constexpr double CellHeight = 1e6;

}

CoursePrintout::CoursePrintout(const CourseSource& source)
    : m_picture(courseOf(source))
{
    const auto index = static_cast<std::size_t>(source.selected);
    const ListedRecord& record = source.records[index];
    m_kind = toQString(record.label);
    m_heading = (m_kind + u' ' + toQString(shownDate(record))).trimmed();
    if (record.isOfCurrentVisit)
        m_heading += u" (current visit)"_s;
    if (record.isLocked)
        m_heading += u" (locked)"_s;
    for (const RecordField& field : recordFields(record, recordBefore(source.records, index))) {
        const QString before = toQString(field.before);
        m_fields.push_back({ toQString(field.caption), toQString(field.value),
            before.isEmpty() ? QString() : u"was %1"_s.arg(before) });
    }
    if (m_picture)
        m_table = m_picture->table();

    m_parts.push_back({ Part::Kind::Heading });
    for (std::size_t row = 0; row < m_fields.size(); ++row)
        m_parts.push_back({ Part::Kind::Field, row });
    if (!m_picture)
        return;
    m_parts.push_back({ Part::Kind::Picture });
    m_parts.push_back({ Part::Kind::TableHead });
    for (std::size_t row = 0; row < m_table.rows.size(); ++row)
        m_parts.push_back({ Part::Kind::TableRow, row });
}

Text CoursePrintout::title() const { return m_table.title.empty() ? toText(m_kind) : m_table.title; }

Text CoursePrintout::plainText() const
{
    QStringList lines(m_heading);
    for (const Field& field : m_fields)
        lines.append(u"%1: %2 %3"_s.arg(field.caption, field.value, field.before).trimmed());
    for (const auto& row : m_table.rows) {
        QStringList cells;
        for (std::size_t column = 0; column < row.size(); ++column) {
            if (!row[column].empty())
                cells.append(toQString(m_table.headings[column]) + u' ' + toQString(row[column]));
        }
        lines.append(cells.join(u", "_s));
    }
    return toText(lines.join(u'\n'));
}

std::vector<FlowingPrintout::Block> CoursePrintout::blocks(double, double height)
{
    m_pictureSize = pictureSize(height);
    std::vector<Block> blocks;
    for (const Part& part : m_parts) {
        const bool isHeading = part.kind == Part::Kind::Heading || part.kind == Part::Kind::TableHead;
        blocks.push_back({ .height = heightOf(part), .keepsWithNext = isHeading });
    }
    return blocks;
}

double CoursePrintout::heightOf(const Part& part) const
{
    const Paper& on = paper();
    switch (part.kind) {
    case Part::Kind::Heading:
        return QFontMetricsF(on.heading).lineSpacing() + on.rowGap;
    case Part::Kind::Field:
        return fieldHeight(m_fields[part.row]) + on.rowGap / 2;
    case Part::Kind::Picture:
        return m_pictureSize.height() + 2 * on.line;
    case Part::Kind::TableHead:
        return cellsHeight(m_table.headings, on.strong) + on.rowGap;
    case Part::Kind::TableRow:
        return cellsHeight(m_table.rows[part.row], on.body) + on.rowGap;
    }
    return 0;
}

// As wide as the page; a picture that would be higher than a page is drawn smaller.
QSize CoursePrintout::pictureSize(double height) const
{
    if (!m_picture)
        return {};
    const int wide = static_cast<int>(width());
    const int room = static_cast<int>(height - 2 * paper().line);
    return { wide, std::min(m_picture->heightFor(wide, { paper().body, paper().palette }), room) };
}

double CoursePrintout::valueLeft() const
{
    double widest = 0;
    for (const Field& field : m_fields)
        widest = std::max(widest, paper().widthOf(paper().body, field.caption));
    return widest + paper().gap;
}

QRectF CoursePrintout::wrapped(const QFont& font, const QString& text, double width) const
{
    return QFontMetricsF(font).boundingRect(QRectF(0, 0, width, CellHeight), CellText, text);
}

// Two thirds of the room beside the captions at most.
double CoursePrintout::valueWidth() const
{
    double widest = 0;
    for (const Field& field : m_fields)
        widest = std::max(widest, paper().widthOf(paper().body, field.value));
    return std::min(widest + 2 * paper().gap, (width() - valueLeft()) * 2 / 3);
}

double CoursePrintout::fieldHeight(const Field& field) const
{
    const double value = wrapped(paper().body, field.value, valueWidth() - paper().gap).height();
    const double before = wrapped(paper().body, field.before, beforeWidth()).height();
    return std::max({ value, before, paper().line });
}

void CoursePrintout::drawField(QPainter& painter, const Field& field) const
{
    const Paper& on = paper();
    const double left = valueLeft();
    on.draw(painter, { 0, 0, left - on.gap, on.line }, on.body, field.caption, true, Qt::AlignRight);
    painter.setPen(Qt::black);
    painter.drawText(QRectF(left, 0, valueWidth() - on.gap, CellHeight), CellText, field.value);
    painter.drawText(QRectF(left + valueWidth(), 0, beforeWidth(), CellHeight), CellText, field.before);
}

double CoursePrintout::columnWidth() const
{
    return width() / static_cast<double>(std::max<std::size_t>(1, m_table.headings.size()));
}

double CoursePrintout::cellsHeight(const std::vector<Text>& cells, const QFont& font) const
{
    double height = paper().line;
    for (const Text& cell : cells)
        height = std::max(height, wrapped(font, toQString(cell), columnWidth() - paper().gap).height());
    return height;
}

void CoursePrintout::drawCells(QPainter& painter, const std::vector<Text>& cells, const QFont& font) const
{
    painter.setPen(Qt::black);
    painter.setFont(font);
    double left = 0;
    for (const Text& cell : cells) {
        painter.drawText(QRectF(left, 0, columnWidth() - paper().gap, CellHeight), CellText, toQString(cell));
        left += columnWidth();
    }
}

void CoursePrintout::drawBlock(QPainter& painter, std::size_t block, bool isFirst) const
{
    const Paper& on = paper();
    const Part& part = m_parts[block];
    switch (part.kind) {
    case Part::Kind::Heading:
        return on.draw(painter, { 0, 0, width(), on.line }, on.heading, m_heading, false);
    case Part::Kind::Field:
        return drawField(painter, m_fields[part.row]);
    case Part::Kind::Picture:
        return m_picture->draw(
            painter, QRect(QPoint(0, static_cast<int>(on.line)), m_pictureSize), { on.body, on.palette });
    case Part::Kind::TableHead:
        return drawCells(painter, m_table.headings, on.strong);
    case Part::Kind::TableRow:
        if (!isFirst)
            on.drawHairline(painter, 0, width(), -on.rowGap / 2);
        return drawCells(painter, m_table.rows[part.row], on.body);
    }
}

}
