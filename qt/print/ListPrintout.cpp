#include "qt/print/ListPrintout.h"

#include "qt/ShownRecords.h"
#include "records/SummaryTypesetting.h"
#include "toolkit/Inks.h"
#include "toolkit/QtText.h"

#include <QPainter>

#include <algorithm>

namespace health {

using namespace Qt::StringLiterals;

namespace {

constexpr double PaperBarWidth = 0.22; // of a line
constexpr double PaperBarRoom = 0.6; // of a line, with the gap beside it

bool isQuietPart(SummaryPart part)
{
    return part == SummaryPart::Caption || part == SummaryPart::Equals || part == SummaryPart::Separator;
}

}

ListPrintout::ListPrintout(const ShownRecords& records, const QString& filter)
{
    // Only there a change of a value is news by itself; the screen shows it in the same way.
    const std::vector<int> earlier = earlierRecords(records.all(), RecordTypeNumber::FunctionalStatus);
    for (const int index : records.rows()) {
        const auto place = static_cast<std::size_t>(index);
        const int before = earlier[place];
        m_rows.push_back(
            rowOf(records.all()[place], before < 0 ? nullptr : &records.all()[static_cast<std::size_t>(before)]));
    }
    const std::size_t all = records.all().size();
    m_remark = all == 1 ? u"1 record"_s : u"%1 records"_s.arg(all);
    if (m_rows.size() != all || !filter.isEmpty())
        m_remark = u"%1 of %2"_s.arg(m_rows.size()).arg(m_remark);
    if (!filter.isEmpty())
        m_remark += u", filtered by "_s + filter;
}

ListPrintout::Row ListPrintout::rowOf(const ListedRecord& record, const ListedRecord* earlier)
{
    Row row;
    row.label = toQString(record.label);
    row.isOfCurrentVisit = record.isOfCurrentVisit;
    if (record.isOfCurrentVisit)
        row.marks.append(u"Current visit"_s);
    if (record.isLocked)
        row.marks.append(u"Locked"_s);
    row.plain = row.label + u": "_s + toQString(record.summary);
    for (const QString& mark : row.marks)
        row.plain += u" ("_s + mark + u')';
    for (const SummaryRun& run : typeset(record, earlier)) {
        const QString text = toQString(run.text);
        if (run.part == SummaryPart::Day) {
            row.day = text;
        } else if (run.part == SummaryPart::Time || run.part == SummaryPart::Colon) {
            row.time += text;
        } else {
            const int start = static_cast<int>(row.text.size());
            row.text += text;
            row.runs.append({ start, static_cast<int>(text.size()), isQuietPart(run.part), run.isChanged });
            if (run.part == SummaryPart::Separator)
                row.breaks.append(static_cast<int>(row.text.size()));
        }
    }
    row.time = row.time.trimmed().isEmpty() ? QString() : row.time;
    return row;
}

Text ListPrintout::title() const { return L"Personal Health Records"; }

std::vector<Text> ListPrintout::remarks() const { return { toText(m_remark) }; }

Text ListPrintout::plainText() const
{
    Text text;
    for (const Row& row : m_rows)
        text += toText(row.plain) + L"\n";
    return text;
}

double ListPrintout::widest(QString Row::*text) const
{
    double widest = 0;
    for (const Row& row : m_rows)
        widest = std::max(widest, paper().widthOf(paper().strong, row.*text));
    return widest;
}

std::vector<FlowingPrintout::Block> ListPrintout::blocks(double width, double)
{
    const double gap = paper().gap;
    double label = widest(&Row::label);
    for (const Row& row : m_rows) {
        for (const QString& mark : row.marks)
            label = std::max(label, paper().widthOf(paper().note, mark));
    }
    m_labelRight = PaperBarRoom * paper().line + label;
    m_dateLeft = m_labelRight + gap;
    m_textLeft = m_dateLeft + widest(&Row::day) + widest(&Row::time) + gap / 2;
    std::vector<Block> blocks;
    for (Row& row : m_rows) {
        layOutText(row, width - (row.day.isEmpty() ? m_dateLeft : m_textLeft));
        const double marks = paper().line * static_cast<double>(1 + row.marks.size());
        blocks.push_back({ .height = std::max(row.layout->boundingRect().height(), marks) + 2 * paper().rowGap });
    }
    return blocks;
}

// Lines break after "; " only; a field that is wider than the line breaks between its words.
void ListPrintout::layOutText(Row& row, double width) const
{
    QString text = row.text;
    double used = 0;
    for (qsizetype part = 0; part <= row.breaks.size(); ++part) {
        const int start = part == 0 ? 0 : row.breaks[part - 1];
        const qsizetype end = part < row.breaks.size() ? row.breaks[part] : row.text.size();
        const double needed = paper().widthOf(paper().strong, row.text.sliced(start, end - start).trimmed());
        if (start > 0 && used + needed > width) {
            text[start - 1] = QChar::LineSeparator; // instead of the blank behind the semicolon
            used = 0;
        }
        used += needed + paper().widthOf(paper().body, u" "_s);
    }
    row.layout = std::make_shared<QTextLayout>(text, paper().body);
    QList<QTextLayout::FormatRange> formats;
    for (const Run& run : row.runs) {
        QTextCharFormat format;
        format.setForeground(run.isQuiet ? colourOf(Ink::Quiet, paper().palette) : QColor(Qt::black));
        if (run.isStrong)
            format.setFontWeight(paper().strong.weight());
        formats.append({ run.start, run.length, format });
    }
    row.layout->setFormats(formats);
    row.layout->beginLayout();
    for (double top = 0;;) {
        QTextLine line = row.layout->createLine();
        if (!line.isValid())
            break;
        line.setLineWidth(std::max(width, paper().line));
        line.setPosition({ 0, top });
        top += paper().line;
    }
    row.layout->endLayout();
}

bool ListPrintout::beginsKind(std::size_t row) const { return row == 0 || m_rows[row].label != m_rows[row - 1].label; }

void ListPrintout::drawBlock(QPainter& painter, std::size_t block, bool isFirst) const
{
    const Row& row = m_rows[block];
    const double height =
        std::max(row.layout->boundingRect().height(), paper().line * static_cast<double>(1 + row.marks.size()));
    if (!isFirst && beginsKind(block))
        paper().drawHairline(painter, PaperBarRoom * paper().line, width(), 0);
    painter.translate(0, paper().rowGap);
    if (row.isOfCurrentVisit)
        painter.fillRect(QRectF(0, 0, PaperBarWidth * paper().line, height), Qt::black);
    drawLabel(painter, row, isFirst || beginsKind(block));
    drawDate(painter, row);
    painter.setPen(Qt::black);
    row.layout->draw(&painter, QPointF(row.day.isEmpty() ? m_dateLeft : m_textLeft, 0));
}

void ListPrintout::drawLabel(QPainter& painter, const Row& row, bool isStrong) const
{
    const Paper& on = paper();
    QRectF place(0, 0, m_labelRight, on.line);
    on.draw(painter, place, isStrong ? on.strong : on.body, row.label, !isStrong, Qt::AlignRight);
    for (const QString& mark : row.marks) {
        place.translate(0, on.line);
        on.draw(painter, place, on.note, mark, false, Qt::AlignRight);
    }
}

void ListPrintout::drawDate(QPainter& painter, const Row& row) const
{
    const Paper& on = paper();
    const double day = on.widthOf(on.strong, row.day);
    on.draw(painter, { m_dateLeft, 0, day, on.line }, on.strong, row.day, false);
    on.draw(painter, { m_dateLeft + day, 0, on.widthOf(on.body, row.time), on.line }, on.body, row.time, true);
}

}
