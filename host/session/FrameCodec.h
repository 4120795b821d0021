// Frames of the protocol between session and server, as docs/protocol.md describes them.
#pragma once

#include "api/Text.h"

#include <QByteArray>

#include <optional>

namespace health {

struct Answer {
    enum class Kind {
        Reply,
        Failed,
        Event,
        Progress,
    };

    Kind kind;
    long long number = 0; // of the request; for progress the percentage; 0 for an event
    QByteArray name; // of an event
    QByteArray text; // UTF-8
};

// The frame of one request; `purpose` (docs/protocol.md) may be empty. Throws Failure if the request is longer than a
// server accepts.
QByteArray encodeRequest(long long number, TextView name, TextView parameter, TextView purpose = {});

// Splits incoming bytes into whole answers. Throws Failure at bytes that are not a frame; nothing can be read after
// them.
class FrameReader {
public:
    void feed(const QByteArray& bytes);
    std::optional<Answer> next();

    // Bytes of an incomplete frame.
    qsizetype pending() const { return m_buffer.size() - m_start; }

private:
    qsizetype length() const;

    qsizetype m_start = 0; // of the next frame in the buffer
    QByteArray m_buffer;
};

}
