#include "host/session/JournalText.h"

#include <QDateTime>
#include <QLocale>

using namespace Qt::StringLiterals;

namespace health {

namespace {

QLocale english() { return QLocale(QLocale::English, QLocale::UnitedStates); }

QString milliseconds(qint64 microseconds)
{
    return english().toString(static_cast<double>(microseconds) / 1000, 'f', 1) + u" ms"_s;
}

QString resultWord(JournalEntry::Result result)
{
    switch (result) {
    case JournalEntry::Result::Waiting:
        return u"Waiting"_s;
    case JournalEntry::Result::Answered:
        return u"Answered"_s;
    case JournalEntry::Result::Refused:
        return u"Refused by the server"_s;
    case JournalEntry::Result::Failed:
        return u"Failed at the server"_s;
    case JournalEntry::Result::ConnectionLost:
        return u"Connection lost"_s;
    case JournalEntry::Result::GivenUp:
        return u"Given up"_s;
    }
    return {};
}

QString callResult(const JournalEntry& entry)
{
    QStringList words(resultWord(entry.result));
    if (entry.isAhead)
        words.append(u"sent ahead"_s);
    if (entry.isRepeated)
        words.append(u"repeated"_s);
    return words.join(u", "_s);
}

QString resultText(const JournalEntry& entry)
{
    switch (entry.kind) {
    case JournalEntry::Kind::Call:
        return callResult(entry);
    case JournalEntry::Kind::Event:
        return entry.times == 1 ? u"Event"_s : u"Event, %1 times"_s.arg(entry.times);
    case JournalEntry::Kind::Connection:
        return {};
    }
    return {};
}

QString durationText(const JournalEntry& entry)
{
    if (!entry.microseconds)
        return {};
    return (entry.isSlow() ? u"slow "_s : QString()) + milliseconds(*entry.microseconds);
}

QString byteCount(qsizetype bytes, bool known) { return known ? english().toString(bytes) : QString(); }

// Quoted as RFC 4180 says. The texts are the program's own, so none begins like a formula.
QString cell(QString text)
{
    const bool plain = !text.contains(u',') && !text.contains(u'"') && !text.contains(u'\n');
    return plain ? text : u'"' + text.replace(u'"', u"\"\""_s) + u'"';
}

}

const QStringList& journalHeadings()
{
    static const QStringList headings { u"Time"_s, u"Call or event"_s, u"Duration"_s, u"Sent"_s, u"Received"_s,
        u"Result"_s };
    return headings;
}

QString journalText(const JournalEntry& entry, int column)
{
    const bool isCall = entry.kind == JournalEntry::Kind::Call;
    switch (column) {
    case JournalColumn::Time:
        return QDateTime::fromMSecsSinceEpoch(entry.time).toString(u"HH:mm:ss.zzz"_s);
    case JournalColumn::Name:
        return entry.name;
    case JournalColumn::Duration:
        return durationText(entry);
    case JournalColumn::Sent:
        return byteCount(entry.sent, isCall);
    case JournalColumn::Received:
        return byteCount(entry.received, entry.kind == JournalEntry::Kind::Event || entry.microseconds);
    case JournalColumn::Result:
        return resultText(entry);
    default:
        return {};
    }
}

QString journalSums(const CallJournal::Sums& sums)
{
    if (sums.calls == 0)
        return u"No calls"_s;
    QString text = u"%1 %2"_s.arg(sums.calls).arg(sums.calls == 1 ? u"call"_s : u"calls"_s);
    if (sums.failed > 0)
        text += u", %1 of them not answered"_s.arg(sums.failed);
    if (sums.slow > 0)
        text += u", %1 slow"_s.arg(sums.slow);
    if (sums.median)
        text += u"; median %1, slowest %2"_s.arg(milliseconds(*sums.median), milliseconds(*sums.slowest));
    return text;
}

QByteArray journalFile(const CallJournal& journal)
{
    QString text = u"Date,"_s + journalHeadings().join(u',') + u"\r\n"_s;
    for (const JournalEntry& entry : journal.entries()) {
        QStringList cells(QDateTime::fromMSecsSinceEpoch(entry.time).date().toString(Qt::ISODate));
        for (int column = 0; column < JournalColumn::Count; ++column)
            cells.append(cell(journalText(entry, column)));
        text += cells.join(u',') + u"\r\n"_s;
    }
    return text.toUtf8();
}

}
