#include "host/session/ProcessTransport.h"

#include "api/Failure.h"

namespace health {

namespace {
constexpr int EndMilliseconds = 2000; // a server ends in a few when its input ends
constexpr qsizetype LongestComplaint = 4096; // bytes
}

ProcessTransport::ProcessTransport(QString program, QStringList arguments)
    : m_program(std::move(program))
    , m_arguments(std::move(arguments))
{
}

ProcessTransport::~ProcessTransport() { close(); }

void ProcessTransport::open()
{
    close();
    m_complaint.clear();
    m_process.reset(new QProcess);
    connect(m_process.get(), &QProcess::finished, this, &Transport::ended);
    connect(m_process.get(), &QProcess::readyReadStandardOutput, this, &Transport::readyRead);
    connect(m_process.get(), &QProcess::readyReadStandardError, this, &ProcessTransport::hearComplaint);
    m_process->start(m_program, m_arguments, QIODevice::ReadWrite | QIODevice::Unbuffered);
    if (!m_process->waitForStarted()) {
        const QString reason = m_process->errorString().section(QStringLiteral(": "), -1); // no name of a system call
        m_process.reset();
        throw Failure(
            QStringLiteral("The server program %1 cannot be started: %2.").arg(m_program, reason).toStdWString());
    }
}

void ProcessTransport::close()
{
    if (!m_process)
        return;
    m_process->disconnect(this);
    // One that goes on sending is not listened to while it is waited for.
    m_process->closeReadChannel(QProcess::StandardOutput);
    m_process->closeReadChannel(QProcess::StandardError);
    m_process->closeWriteChannel();
    if (m_process->waitForFinished(EndMilliseconds))
        return m_process.reset();
    m_process->terminate();
    if (!m_process->waitForFinished(EndMilliseconds)) {
        m_process->kill();
        m_process->waitForFinished(EndMilliseconds);
    }
    m_process.reset();
}

// The process would keep all of it.
void ProcessTransport::hearComplaint()
{
    m_complaint = (m_complaint + m_process->readAllStandardError()).right(LongestComplaint);
}

QString ProcessTransport::endReason() const
{
    const QString said = m_process ? QString::fromUtf8(m_complaint).trimmed() : QString();
    return said.isEmpty() ? tr("The server has ended.") : tr("The server has ended: %1").arg(said.right(400));
}

}
