#include "host/session/FrameCodec.h"

#include "api/Failure.h"
#include "api/Utf8.h"

#include <algorithm>
#include <utility>

namespace health {

namespace {

constexpr qsizetype LengthDigits = 8;
// Bytes of a body. The server has a lower limit of its own for requests. An answer with 100,000 records has 20 MB and
// takes four times that as a Text.
constexpr qsizetype LongestRequest = 99'999'999;
constexpr qsizetype LongestAnswer = 64'000'000;
constexpr qsizetype LargestRest = 1'000'000; // bytes of read frames that the buffer may keep

bool areDigits(QByteArrayView text)
{
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
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
        throw Failure(L"The server sent an invalid reply (unknown kind).");
    }
}

Answer decode(QByteArray body)
{
    const Answer::Kind kind = kindOf(body.isEmpty() ? '\0' : body[0]);
    const qsizetype end = body.indexOf('\n');
    if (end < 0)
        throw Failure(L"The server sent an invalid reply (missing header).");
    const QByteArray header = body.sliced(1, end - 1);
    body.remove(0, end + 1);
    if (kind == Answer::Kind::Event)
        return { kind, 0, header, std::move(body) };
    if (header.isEmpty() || !areDigits(header))
        throw Failure(L"The server sent an invalid reply (missing number).");
    return { kind, header.toLongLong(), {}, std::move(body) };
}

}

QByteArray encodeRequest(long long number, TextView name, TextView parameter, TextView purpose)
{
    QByteArray body = QByteArray::number(number);
    if (!purpose.empty()) {
        body += ' ';
        body += narrow(purpose);
    }
    body += '\n';
    body += narrow(name);
    body += '\n';
    body += narrow(parameter);
    if (body.size() > LongestRequest)
        throw Failure(L"The request is longer than 99,999,999 bytes.");
    return QByteArray::number(body.size()).rightJustified(LengthDigits, '0') + body;
}

void FrameReader::feed(const QByteArray& bytes)
{
    if (bytes.isEmpty())
        return;
    // Otherwise the buffer of a stream whose reads never end with a frame would grow forever.
    m_buffer.remove(0, std::exchange(m_start, 0));
    m_buffer += bytes;
}

// The length at the beginning of the buffer, as far as it has arrived. Throws at the first byte that is not a digit.
qsizetype FrameReader::length() const
{
    const auto digits = QByteArrayView(m_buffer).sliced(m_start, std::min(LengthDigits, pending()));
    if (!areDigits(digits))
        throw Failure(L"The server sent an invalid reply (missing length).");
    const qsizetype length = digits.toByteArray().toLongLong();
    if (digits.size() == LengthDigits && length > LongestAnswer)
        throw Failure(L"The server's reply is too long: more than 64,000,000 bytes.");
    return length;
}

std::optional<Answer> FrameReader::next()
{
    const qsizetype body = length();
    if (pending() < LengthDigits || pending() < LengthDigits + body)
        return std::nullopt;
    const qsizetype begin = m_start + LengthDigits;
    if (begin + body == m_buffer.size()) {
        // Avoids copying a long answer: it takes over the buffer.
        m_start = 0;
        QByteArray last = std::exchange(m_buffer, {});
        last.remove(0, begin);
        return decode(std::move(last));
    }
    m_start = begin + body;
    QByteArray text = m_buffer.sliced(begin, body);
    if (m_start > std::max(LargestRest, pending()))
        m_buffer = m_buffer.sliced(std::exchange(m_start, 0)); // frees the memory of a long answer
    return decode(std::move(text));
}

}
