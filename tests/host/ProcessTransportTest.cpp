#include "host/session/ProcessTransport.h"

#include <QFile>

#include <gtest/gtest.h>

namespace health::test {
namespace {

// Kilobytes.
long largestMemory()
{
    QFile status("/proc/self/status");
    EXPECT_TRUE(status.open(QIODevice::ReadOnly));
    const QByteArray text = status.readAll();
    return text.mid(text.indexOf("VmHWM:")).simplified().split(' ').value(1).toLong();
}

TEST(ProcessTransport, KeepsTheEndOfTheErrorOutput)
{
    const long before = largestMemory();
    ProcessTransport server("sh", { "-c", "yes complaint | head -c 100000000 >&2; echo The disk is full. >&2" });
    server.open();
    while (server.isAlive())
        server.device()->waitForReadyRead(20);
    EXPECT_TRUE(server.endReason().endsWith("complaint\nThe disk is full.")) << server.endReason().toStdString();
    EXPECT_LT(server.endReason().size(), 500);
    ASSERT_GT(before, 0);
    EXPECT_LT(largestMemory() - before, 30000);
}

}
}
