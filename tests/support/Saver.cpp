// Saves refusals until its input ends, one after the other, and says which the server acknowledged:
// saver SERVER-PROGRAM DATA-FOLDER NAME. Its server may be killed at any time.
#include "host/session/HostSession.h"
#include "host/session/ProcessTransport.h"

#include <QGuiApplication>

#include <cstdio>
#include <poll.h>
#include <unistd.h>

using namespace health;

int main(int argc, char** argv)
{
    const QGuiApplication application(argc, argv);
    if (argc != 4)
        return 2;
    const Text name = QString::fromLocal8Bit(argv[3]).toStdWString();
    ProcessTransport transport(QString::fromLocal8Bit(argv[1]), { "--data", QString::fromLocal8Bit(argv[2]) });
    HostSession session(transport, 90000, [](const QString&) { return true; });
    session.signOn(L"SORREL,ADA");
    pollfd input { STDIN_FILENO, POLLIN, 0 };
    for (int count = 1; poll(&input, 1, 2) == 0; ++count) {
        const Text comment = name + L"-" + std::to_wstring(count);
        const Text reply = session.callText(L"MEVREF SET", L"^EXAM^1^14^01/02/2026^" + comment);
        std::printf("%ls %ls\n", reply.c_str(), comment.c_str());
        std::fflush(stdout);
    }
    return 0;
}
