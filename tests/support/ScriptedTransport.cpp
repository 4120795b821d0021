#include "tests/support/ScriptedTransport.h"

#include "platform/Failure.h"

namespace health::test {

void ScriptedTransport::open()
{
    close();
    if (refuseConnections > 0) {
        --refuseConnections;
        throw Failure(L"Nobody is there.");
    }
    endsAfterAnswer = false;
    m_stream = std::make_unique<ScriptedStream>(++connections, answer);
    connect(m_stream.get(), &QIODevice::readyRead, this, &Transport::readyRead);
}

}
