#include "host/session/CallJournal.h"

#include "toolkit/QtText.h"

#include <QDateTime>

#include <algorithm>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace health {

namespace {

// Characters kept of a name: longer ones are not the panel's.
constexpr qsizetype LongestName = 60;

// "-1^...", as the protocol defines a refusal.
bool isRefusal(const QByteArray& reply)
{
    qsizetype end = 1;
    while (end < reply.size() && reply[end] >= '0' && reply[end] <= '9')
        ++end;
    return reply.startsWith('-') && end > 1 && (end == reply.size() || reply[end] == '^');
}

QString beginning(const QByteArray& utf8)
{
    constexpr auto most = static_cast<qsizetype>(CallJournal::LongestContent);
    return utf8.size() <= most ? QString::fromUtf8(utf8) : QString::fromUtf8(utf8.left(most)) + u" [...]"_s;
}

QString beginning(TextView text)
{
    return text.size() <= CallJournal::LongestContent
        ? toQString(text)
        : toQString(text.substr(0, CallJournal::LongestContent)) + u" [...]"_s;
}

JournalEntry::Result resultOf(const Answer& answer)
{
    if (answer.kind == Answer::Kind::Failed)
        return JournalEntry::Result::Failed;
    return isRefusal(answer.text) ? JournalEntry::Result::Refused : JournalEntry::Result::Answered;
}

}

QString nameWithoutNumbers(const QByteArray& event)
{
    QStringList pieces = QString::fromUtf8(event.left(LongestName)).split(u'.');
    for (QString& piece : pieces) {
        const bool isKind =
            std::all_of(piece.cbegin(), piece.cend(), [](QChar letter) { return letter >= u'A' && letter <= u'Z'; });
        if (!isKind)
            piece = u"*"_s;
    }
    return pieces.join(u'.');
}

bool JournalEntry::isSlow() const { return microseconds.value_or(0) >= CallJournal::SlowMicroseconds; }

void CallJournal::clear()
{
    m_entries.clear();
    m_contents.clear();
    m_requests.clear();
    Q_EMIT changed();
}

void CallJournal::setUnlocked(bool unlocked)
{
    m_unlocked = unlocked;
    if (!unlocked)
        m_contents.clear();
    Q_EMIT changed();
}

CallJournal::Sums CallJournal::sums() const
{
    Sums sums;
    std::vector<qint64> durations;
    for (const JournalEntry& entry : m_entries) {
        if (entry.kind != JournalEntry::Kind::Call)
            continue;
        ++sums.calls;
        const bool answered = entry.result == JournalEntry::Result::Answered;
        sums.failed += !answered && entry.result != JournalEntry::Result::Waiting;
        sums.slow += entry.isSlow();
        if (entry.microseconds)
            durations.push_back(*entry.microseconds);
    }
    if (durations.empty())
        return sums;
    const auto middle = durations.begin() + static_cast<std::ptrdiff_t>((durations.size() - 1) / 2);
    std::nth_element(durations.begin(), middle, durations.end());
    sums.median = *middle;
    sums.slowest = *std::max_element(durations.begin(), durations.end());
    return sums;
}

JournalEntry& CallJournal::add(JournalEntry::Kind kind, QString name)
{
    JournalEntry& entry = m_entries.emplace_back();
    entry.kind = kind;
    entry.id = m_nextId++;
    entry.time = QDateTime::currentMSecsSinceEpoch();
    entry.name = std::move(name);
    if (m_entries.size() > Most) {
        m_contents.erase(m_entries.front().id);
        m_entries.pop_front();
    }
    while (!m_requests.empty() && m_requests.front().id < m_entries.front().id)
        m_requests.pop_front();
    return m_entries.back();
}

const JournalContent* CallJournal::content(qint64 id) const
{
    const auto found = m_contents.find(id);
    return found == m_contents.end() ? nullptr : &found->second;
}

// The last request of this number; null if it was dropped.
auto CallJournal::latest(long long number) -> Request*
{
    const auto found = std::find_if(
        m_requests.rbegin(), m_requests.rend(), [&](const Request& request) { return request.number == number; });
    return found == m_requests.rend() ? nullptr : &*found;
}

void CallJournal::noteConnection(const QString& what)
{
    add(JournalEntry::Kind::Connection, what).result = JournalEntry::Result::Answered;
    Q_EMIT changed();
}

void CallJournal::noteOpened() { noteConnection(u"Connection opened"_s); }

void CallJournal::noteNotOpened()
{
    add(JournalEntry::Kind::Connection, u"Connection not opened"_s).result = JournalEntry::Result::Failed;
    Q_EMIT changed();
}

void CallJournal::noteLost()
{
    endWaiting();
    add(JournalEntry::Kind::Connection, u"Connection lost"_s).result = JournalEntry::Result::ConnectionLost;
    Q_EMIT changed();
}

void CallJournal::noteClosed()
{
    endWaiting();
    noteConnection(u"Connection closed"_s);
}

void CallJournal::endWaiting()
{
    for (JournalEntry& entry : m_entries) {
        if (entry.result == JournalEntry::Result::Waiting)
            entry.result = JournalEntry::Result::ConnectionLost;
    }
}

void CallJournal::noteSent(long long number, TextView name, TextView parameter, qsizetype bytes)
{
    const bool repeated = latest(number) != nullptr;
    JournalEntry& entry = add(JournalEntry::Kind::Call, toQString(name).left(LongestName));
    entry.sent = bytes;
    entry.isRepeated = repeated;
    if (m_unlocked)
        m_contents[entry.id].parameter = beginning(parameter);
    m_requests.push_back({ entry.id, number, m_clock.nsecsElapsed() });
    Q_EMIT changed();
}

void CallJournal::noteAhead()
{
    if (!m_entries.empty() && m_entries.back().kind == JournalEntry::Kind::Call)
        m_entries.back().isAhead = true;
}

void CallJournal::noteAnswer(const Answer& answer)
{
    const Request* const request = latest(answer.number);
    if (!request)
        return;
    JournalEntry& entry = entryOf(*request);
    entry.result = resultOf(answer);
    entry.microseconds = (m_clock.nsecsElapsed() - request->sentAt) / 1000;
    entry.received = answer.text.size();
    if (const auto content = m_contents.find(entry.id); content != m_contents.end())
        content->second.reply = beginning(answer.text);
    Q_EMIT changed();
}

void CallJournal::noteEvent(const Answer& event)
{
    const QString name = nameWithoutNumbers(event.name);
    const bool again = !m_unlocked && !m_entries.empty() && m_entries.back().kind == JournalEntry::Kind::Event
        && m_entries.back().name == name;
    JournalEntry& entry = again ? m_entries.back() : add(JournalEntry::Kind::Event, name);
    entry.times += again;
    entry.result = JournalEntry::Result::Answered;
    entry.received += event.name.size() + event.text.size();
    if (m_unlocked)
        m_contents[entry.id] = { QString::fromUtf8(event.name), beginning(event.text) };
    Q_EMIT changed();
}

void CallJournal::noteGivenUp(long long number)
{
    const Request* const request = latest(number);
    if (!request || entryOf(*request).result != JournalEntry::Result::ConnectionLost)
        return;
    entryOf(*request).result = JournalEntry::Result::GivenUp;
    Q_EMIT changed();
}

}
