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
    long long number = 0; // of the request; of a progress its percent; 0 for an event
    QByteArray name; // of an event
    QByteArray text; // UTF-8
};

// The frame of one request, with what it is for where the server shall know. Throws Failure for one that is longer than
// a server takes.
QByteArray encodeRequest(long long number, TextView name, TextView parameter, TextView purpose = {});

// Takes bytes as they come and gives whole answers. Throws Failure where the bytes are no frame; nothing
// more can be read then.
class FrameReader {
public:
    void feed(const QByteArray& bytes);
    std::optional<Answer> next();

    // Bytes of a frame that is not whole yet.
    qsizetype pending() const { return m_buffer.size() - m_start; }

private:
    qsizetype length() const;

    qsizetype m_start = 0; // of the next frame in the buffer
    QByteArray m_buffer;
};

}
