#include "qt/RowSetter.h"

#include "toolkit/Measures.h"
#include "toolkit/QtText.h"

#include <QFontMetrics>

#include <algorithm>
#include <span>

namespace health {

namespace {

constexpr std::size_t MostWidths = 5000; // in memory
constexpr TextView Digit = L"0";
constexpr double DateGap = 0.7; // behind the date's column, in line heights

RowStyle styleOf(const SummaryRun& run)
{
    switch (run.part) {
    case SummaryPart::Day:
        return RowStyle::Strong;
    case SummaryPart::Value:
        return run.isChanged ? RowStyle::Strong : RowStyle::Plain;
    default:
        return RowStyle::Quiet;
    }
}

bool isLead(const SummaryRun& run)
{
    return run.part == SummaryPart::Day || run.part == SummaryPart::Time || run.part == SummaryPart::Colon;
}

TextView withoutEndBlanks(TextView text) { return text.substr(0, text.find_last_not_of(L' ') + 1); }

}

QString inOneLine(TextView text)
{
    QString line = toQString(text);
    for (QChar& letter : line) {
        if (letter.category() == QChar::Other_Control)
            letter = u' ';
    }
    return line;
}

void RowSetter::setFont(const QFont& font)
{
    m_plain = font;
    m_strong = semibold(font);
    m_plainWidths.clear();
    m_strongWidths.clear();
}

int RowSetter::widthOf(TextView text, RowStyle style)
{
    Widths& widths = style == RowStyle::Strong ? m_strongWidths : m_plainWidths;
    if (const auto known = widths.find(text); known != widths.end())
        return known->second;
    if (widths.size() >= MostWidths)
        widths.clear();
    const int width = QFontMetrics(font(style)).horizontalAdvance(inOneLine(text));
    widths.emplace(text, width);
    return width;
}

int RowSetter::dateWidth()
{
    const int digit = widthOf(Digit, RowStyle::Strong);
    const int day = 8 * digit + 2 * widthOf(L"/", RowStyle::Strong);
    const int time = widthOf(L" 00:00:", RowStyle::Quiet);
    return day + time + qRound(DateGap * QFontMetrics(m_plain).height());
}

// Places runs from left to right.
class RowSetter::Lines {
public:
    // `next`: where the lines after the first begin.
    Lines(RowSetter& setter, int next, int right)
        : m_setter(setter)
        , m_next(next)
        , m_right(right)
    {
    }

    // If they may not leave the date alone in its line, the first field stays there.
    void beginFields(int left, bool mayLeaveDateAlone)
    {
        m_left = left;
        m_hasText = mayLeaveDateAlone && left > 0;
    }

    // The runs of a field, with the separator behind it.
    void setField(std::span<const SummaryRun> runs)
    {
        const int width = visibleWidth(runs);
        const bool fitsALine = m_next + width <= m_right;
        if (m_hasText && fitsALine && m_left + width > m_right)
            breakLine();
        for (const SummaryRun& run : runs)
            fitsALine ? put(run.text, styleOf(run)) : setWords(run.text, styleOf(run));
    }

    void put(TextView text, RowStyle style)
    {
        const bool continues = m_hasText && m_left == m_end && m_text.pieces.back().style == style;
        if (continues)
            m_text.pieces.back().length += text.size();
        else
            m_text.pieces.push_back({ m_start, text.size(), m_left, m_line, style });
        m_start += text.size();
        m_left += m_setter.widthOf(text, style);
        m_end = m_left;
        m_hasText = true;
    }

    RowText text()
    {
        m_text.lines = m_line + 1;
        return std::move(m_text);
    }

private:
    int visibleWidth(std::span<const SummaryRun> runs)
    {
        int width = 0;
        for (const SummaryRun& run : runs) {
            const TextView text = &run == &runs.back() ? withoutEndBlanks(run.text) : run.text;
            width += m_setter.widthOf(text, styleOf(run));
        }
        return width;
    }

    void setWords(TextView text, RowStyle style)
    {
        while (!text.empty()) {
            const std::size_t length = std::min(text.find(L' '), text.size() - 1) + 1;
            setWord(text.substr(0, length), style);
            text.remove_prefix(length);
        }
    }

    void setWord(TextView word, RowStyle style)
    {
        if (m_hasText && m_left + m_setter.widthOf(withoutEndBlanks(word), style) > m_right)
            breakLine();
        while (word.size() > 1 && m_left + m_setter.widthOf(withoutEndBlanks(word), style) > m_right) {
            const std::size_t fitting = std::max<std::size_t>(1, fittingLetters(word, style));
            put(word.substr(0, fitting), style);
            word.remove_prefix(fitting);
            breakLine();
        }
        put(word, style);
    }

    // How many letters of a word that is longer than a line fit it; widths grow with the letters.
    std::size_t fittingLetters(TextView word, RowStyle style) const
    {
        const QFontMetrics metrics(m_setter.font(style));
        std::size_t fits = 0;
        std::size_t tooMany = word.size();
        while (fits + 1 < tooMany) {
            const std::size_t middle = (fits + tooMany) / 2;
            const bool fit = m_left + metrics.horizontalAdvance(inOneLine(word.substr(0, middle))) <= m_right;
            (fit ? fits : tooMany) = middle;
        }
        return fits;
    }

    void breakLine()
    {
        m_left = m_next;
        ++m_line;
        m_hasText = false;
    }

    RowSetter& m_setter;
    const int m_next;
    const int m_right;
    int m_left = 0;
    int m_end = 0; // of the last piece
    int m_line = 0;
    std::size_t m_start = 0; // of the next run, in the summary
    bool m_hasText = false; // the line
    RowText m_text;
};

RowText RowSetter::set(const std::vector<SummaryRun>& runs, int width, int narrow)
{
    const auto body = std::ranges::find_if_not(runs, isLead);
    const int date = body == runs.begin() ? 0 : dateWidth();
    const bool isNarrow = width < narrow;
    Lines lines(*this, isNarrow ? 0 : date, width);
    for (auto run = runs.begin(); run != body; ++run)
        lines.put(run->text, styleOf(*run));
    lines.beginFields(date, isNarrow);
    for (auto first = body; first != runs.end();) {
        const auto isSeparator = [](const SummaryRun& run) { return run.part == SummaryPart::Separator; };
        auto end = std::find_if(first, runs.end(), isSeparator);
        if (end != runs.end())
            ++end;
        lines.setField({ first, end });
        first = end;
    }
    return lines.text();
}

}
