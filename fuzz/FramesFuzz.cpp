// Frames in both directions: a stream is read the same in portions of any size, and a request is a frame of exactly
// its length. Input: the bytes of a stream; the same bytes as number, name and parameter.
#include "api/Failure.h"
#include "api/Utf8.h"
#include "fuzz/FuzzInput.h"
#include "host/session/FrameCodec.h"
#include "text/Conversions.h"

namespace health::fuzz {
namespace {

// Everything read from a stream, as text; ends with what is still pending, or with a failure.
QByteArray readInPortions(const QByteArray& stream, qsizetype portion)
{
    FrameReader reader;
    QByteArray log;
    try {
        for (qsizetype at = 0; at < stream.size(); at += portion) {
            reader.feed(stream.sliced(at, std::min(portion, stream.size() - at)));
            while (const auto answer = reader.next()) {
                log += "RFEP"[static_cast<int>(answer->kind)] + answer->name + QByteArray::number(answer->number);
                log += '\n' + answer->text + '\f';
            }
        }
        require(reader.pending() <= stream.size(), "no more is pending than arrived");
        return log + QByteArray::number(reader.pending());
    } catch (const Failure&) {
        return log + "failed";
    }
}

void answers(const QByteArray& stream)
{
    const QByteArray whole = readInPortions(stream, std::max<qsizetype>(1, stream.size()));
    for (const qsizetype portion : { 1, 3, 8, 13 })
        require(readInPortions(stream, portion) == whole, "the portions' sizes do not matter");
}

void request(Sections input)
{
    const long long number = roundToWhole(leadingNumber(input.next()));
    const Text name = input.next();
    const Text parameter = input.next();
    const QByteArray bytes = encodeRequest(number, name, parameter);
    const QByteArray body = bytes.sliced(8);
    require(bytes.first(8).toLongLong() == body.size(), "the length is the body's");
    require(body.toStdString() == std::to_string(number) + '\n' + narrow(name) + '\n' + narrow(parameter),
        "the body is number, name and parameter");
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
