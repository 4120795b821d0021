#include "qt/RunFlow.h"

#include <QFontMetrics>
#include <QPainter>

#include <algorithm>

namespace health {

namespace {

int widthOf(const TextRun& run)
{
    const QFontMetrics metrics(run.font);
    return run.text == RunFlow::Bar ? metrics.height() * 3 / 5 : metrics.horizontalAdvance(run.text);
}

int widthOf(const RunFlow::Part& part)
{
    int width = 0;
    for (const TextRun& run : part.runs)
        width += widthOf(run);
    return width;
}

// Without the blanks that end a line.
int visibleWidth(const RunFlow::Part& part)
{
    if (part.runs.isEmpty())
        return 0;
    TextRun last = part.runs.last();
    const int whole = widthOf(last);
    while (last.text.endsWith(u' '))
        last.text.chop(1);
    return widthOf(part) - whole + widthOf(last);
}

}

// Places runs from left to right.
class RunFlow::Setter {
public:
    explicit Setter(int width)
        : m_width(std::max(1, width))
    {
    }

    void set(const Part& part)
    {
        if (m_left > 0 && (part.breaksBefore || m_left + visibleWidth(part) > m_width))
            breakLine();
        if (visibleWidth(part) <= m_width) {
            for (const TextRun& run : part.runs)
                put(run);
            return;
        }
        for (const TextRun& run : part.runs)
            setWords(run);
    }

    QList<Piece> pieces;

private:
    void setWords(const TextRun& run)
    {
        qsizetype at = 0;
        while (at < run.text.size()) {
            const qsizetype blank = run.text.indexOf(u' ', at);
            const qsizetype end = blank < 0 ? run.text.size() : blank + 1;
            setWord({ run.text.mid(at, end - at), run.font, run.colour });
            at = end;
        }
    }

    void setWord(TextRun word)
    {
        if (m_left > 0 && m_left + visibleWidth({ { word } }) > m_width)
            breakLine();
        while (word.text.size() > 1 && visibleWidth({ { word } }) > m_width) {
            qsizetype fits = word.text.size() - 1;
            while (fits > 1 && widthOf({ word.text.left(fits), word.font, word.colour }) > m_width)
                --fits;
            put({ word.text.left(fits), word.font, word.colour });
            word.text.remove(0, fits);
            breakLine();
        }
        put(word);
    }

    void put(const TextRun& run)
    {
        pieces.append({ run, m_left, m_line });
        m_left += widthOf(run);
    }

    void breakLine()
    {
        m_left = 0;
        ++m_line;
    }

    int m_width;
    int m_left = 0;
    int m_line = 0;
};

QList<RunFlow::Piece> RunFlow::set(int width) const
{
    Setter setter(width);
    for (const Part& part : m_parts)
        setter.set(part);
    return setter.pieces;
}

int RunFlow::naturalWidth() const
{
    int widest = 0;
    int width = 0;
    for (const Part& part : m_parts) {
        if (part.breaksBefore)
            width = 0;
        width += widthOf(part);
        widest = std::max(widest, width);
    }
    return widest;
}

int RunFlow::lines(int width) const
{
    const QList<Piece> pieces = set(width);
    return pieces.isEmpty() ? 0 : pieces.last().line + 1;
}

void RunFlow::draw(QPainter& painter, QPoint topLeft, int width, int lineHeight) const
{
    for (const Piece& piece : set(width)) {
        painter.setFont(piece.run.font);
        painter.setPen(piece.run.colour);
        const QFontMetrics metrics(piece.run.font);
        if (piece.run.text == Bar) {
            painter.fillRect(topLeft.x() + piece.left, topLeft.y() + piece.line * lineHeight, lineHeight / 6,
                lineHeight, piece.run.colour);
            continue;
        }
        const int baseline = (lineHeight - metrics.height()) / 2 + metrics.ascent();
        painter.drawText(topLeft + QPoint(piece.left, piece.line * lineHeight + baseline), piece.run.text);
    }
}

}
