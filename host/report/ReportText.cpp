#include "host/report/ReportText.h"

#include <QRegularExpression>

#include <algorithm>
#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace health {

namespace {

constexpr qsizetype LongestCaption = 24;
constexpr qsizetype LongestValue = 44; // longer lines are wide in any font
constexpr qsizetype LongestHeading = 60;

bool isHeading(const QString& line)
{
    const bool hasLetter = std::any_of(line.begin(), line.end(), [](QChar letter) { return letter.isLetter(); });
    return hasLetter && line == line.toUpper() && !line.startsWith(u' ') && line.size() <= LongestHeading
        && !line.contains(u"  "_s) && !line.contains(u':');
}

// Where the value begins: after the first colon with a blank, or the first two blanks. -1 without a value.
qsizetype valueStart(const QString& line)
{
    const qsizetype blanks = line.indexOf(u"  "_s);
    const qsizetype colon = line.indexOf(u": "_s);
    if (colon > 0 && (blanks < 0 || colon < blanks))
        return colon + 1;
    return blanks;
}

// A second column that would no longer stand below the one of the line above.
bool hasColumns(const QString& value, bool afterColon)
{
    static const QRegularExpression another(u"  .*:"_s);
    return value.contains(u"   "_s) || (afterColon ? value.contains(another) : value.contains(u"  "_s));
}

std::optional<ReportRow> pairOf(const QString& line)
{
    const QString text = line.trimmed();
    const qsizetype start = text.endsWith(u':') && !text.contains(u"  "_s) ? text.size() : valueStart(text);
    if (start <= 0 || start > LongestCaption)
        return std::nullopt;
    const QString value = text.mid(start).trimmed();
    if (value.size() > LongestValue || hasColumns(value, text[start - 1] == u':'))
        return std::nullopt;
    return ReportRow { ReportRow::Kind::Pair, text.left(start), value };
}

bool endsGroup(const QString& line) { return line == u"\f" || line.trimmed().isEmpty(); }

QList<ReportRow> pairsOf(const QStringList& group)
{
    QList<ReportRow> rows;
    for (const QString& line : group) {
        const auto pair = pairOf(line);
        if (!pair)
            return {};
        rows.append(*pair);
    }
    return rows;
}

void appendGroup(QList<ReportRow>& rows, QStringList group)
{
    if (group.size() > 1 && isHeading(group.first()))
        rows.append({ ReportRow::Kind::Heading, {}, group.takeFirst() });
    if (const QList<ReportRow> pairs = pairsOf(group); !pairs.isEmpty()) {
        rows.append(pairs);
        return;
    }
    for (const QString& line : group)
        rows.append({ ReportRow::Kind::Fixed, {}, line });
}

}

QList<ReportRow> reportRows(const QStringList& lines)
{
    QList<ReportRow> rows;
    QStringList group;
    for (const QString& line : lines) {
        if (!endsGroup(line)) {
            group.append(line);
            continue;
        }
        appendGroup(rows, std::exchange(group, {}));
        rows.append({ line == u"\f" ? ReportRow::Kind::PageBreak : ReportRow::Kind::Fixed, {}, {} });
    }
    appendGroup(rows, group);
    return rows;
}

QString reportedVisit(const QStringList& lines)
{
    static const QRegularExpression title(u"^VISIT [0-9]+$"_s);
    if (!title.match(lines.value(0)).hasMatch())
        return {};
    const QStringList group = lines.mid(0, std::max<qsizetype>(0, lines.indexOf(QString())));
    const auto valueOf = [&](const QString& caption) {
        for (const QString& line : group.isEmpty() ? lines : group) {
            if (line.startsWith(caption))
                return line.mid(caption.size()).trimmed();
        }
        return QString();
    };
    QStringList parts { valueOf(u"Date:"_s), valueOf(u"Location:"_s) };
    parts.removeAll(QString());
    return parts.isEmpty() ? QString() : u"Visit "_s + parts.join(u", "_s);
}

}
