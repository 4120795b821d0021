// Frames in both directions. What the server sends is read the same in any portions; what the host sends is a frame of
// exactly its length. Input: the bytes of a stream; the same bytes as number, name and parameter.
#include "api/Failure.h"
#include "api/Utf8.h"
#include "fuzz/FuzzInput.h"
#include "host/session/FrameCodec.h"
#include "text/Conversions.h"

#include <vector>

namespace health::fuzz {
namespace {

// What a reader made of a stream: its answers as frames again, and whether it failed.
struct Reading {
    std::vector<QByteArray> answers;
    bool failed = false;
    qsizetype pending = 0;

    bool operator==(const Reading&) const = default;
};

QByteArray frame(const QByteArray& body) { return QByteArray::number(body.size()).rightJustified(8, '0') + body; }

// The heading's leading zeros are not kept by the reader.
QByteArray frameOf(const Answer& answer)
{
    static constexpr char letters[] = "RFEP";
    const bool event = answer.kind == Answer::Kind::Event;
    const QByteArray heading = event ? answer.name : QByteArray::number(answer.number);
    return frame(letters[static_cast<int>(answer.kind)] + heading + '\n' + answer.text);
}

Reading readInPortions(const QByteArray& stream, qsizetype portion)
{
    FrameReader reader;
    Reading reading;
    try {
        for (qsizetype at = 0; at < stream.size(); at += portion) {
            reader.feed(stream.sliced(at, std::min(portion, stream.size() - at)));
            while (const auto answer = reader.next())
                reading.answers.push_back(frameOf(*answer));
        }
        reading.pending = reader.pending();
    } catch (const Failure&) {
        reading.failed = true;
    }
    return reading;
}

void answers(const QByteArray& stream)
{
    const Reading whole = readInPortions(stream, std::max<qsizetype>(1, stream.size()));
    for (const qsizetype portion : { 1, 3, 8, 13 })
        require(readInPortions(stream, portion) == whole, "portions do not matter");
    QByteArray again;
    for (const QByteArray& answer : whole.answers)
        again += answer;
    const Reading second = readInPortions(again, std::max<qsizetype>(1, again.size()));
    require(
        !second.failed && second.pending == 0 && second.answers == whole.answers, "an answer read is a frame again");
    require(whole.failed || whole.pending <= stream.size(), "no more is pending than came");
}

void request(Sections input)
{
    const long long number = roundToWhole(leadingNumber(input.next()));
    const Text name = input.next();
    const Text parameter = input.next();
    const QByteArray bytes = encodeRequest(number, name, parameter);
    const QByteArray body = bytes.sliced(8);
    require(bytes.first(8).toLongLong() == body.size(), "the length is the body's");
    // Read as the server does: number, name, all the rest.
    const qsizetype first = body.indexOf('\n');
    require(body.first(first).toLongLong() == number, "the number comes first");
    if (name.find(L'\n') != Text::npos)
        return;
    const qsizetype second = body.indexOf('\n', first + 1);
    require(widen(body.sliced(first + 1, second - first - 1).toStdString()) == name, "the name is the second");
    require(widen(body.sliced(second + 1).toStdString()) == parameter, "the parameter is the rest");
}

}
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace health::fuzz;
    answers(QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
    request(Sections(data, size));
    return 0;
}
