#include "host/FrameCodec.h"

#include "platform/Failure.h"

#include <algorithm>

namespace health {

namespace {

constexpr qsizetype LengthDigits = 8;

bool allDigits(const QByteArray& text)
{
    return !text.isEmpty() && std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

Answer::Kind kindOf(char letter)
{
    switch (letter) {
    case 'R':
        return Answer::Kind::Reply;
    case 'F':
        return Answer::Kind::Failed;
    case 'E':
        return Answer::Kind::Event;
    case 'P':
        return Answer::Kind::Progress;
    default:
        throw Failure(L"The server's answer was garbled (unknown kind).");
    }
}

Answer decode(const QByteArray& body)
{
    const Answer::Kind kind = kindOf(body.isEmpty() ? '\0' : body[0]);
    const qsizetype end = body.indexOf('\n');
    if (end < 0)
        throw Failure(L"The server's answer was garbled (no heading).");
    const QByteArray heading = body.mid(1, end - 1);
    if (kind == Answer::Kind::Event)
        return { kind, 0, heading, body.mid(end + 1) };
    if (!allDigits(heading))
        throw Failure(L"The server's answer was garbled (no number).");
    return { kind, heading.toLongLong(), {}, body.mid(end + 1) };
}

}

QByteArray encodeRequest(long long number, TextView name, TextView parameter)
{
    QByteArray body = QByteArray::number(number) + '\n';
    body += narrow(name);
    body += '\n';
    body += narrow(parameter);
    return QByteArray::number(body.size()).rightJustified(LengthDigits, '0') + body;
}

std::optional<Answer> FrameReader::next()
{
    if (pending() < LengthDigits)
        return std::nullopt;
    const QByteArray digits = m_buffer.mid(m_start, LengthDigits);
    if (!allDigits(digits))
        throw Failure(L"The server's answer was garbled (no length).");
    const qsizetype length = digits.toLongLong();
    if (pending() < LengthDigits + length)
        return std::nullopt;
    Answer answer = decode(m_buffer.mid(m_start + LengthDigits, length));
    m_start += LengthDigits + length;
    if (m_start == m_buffer.size()) {
        m_buffer.clear();
        m_start = 0;
    }
    return answer;
}

}
