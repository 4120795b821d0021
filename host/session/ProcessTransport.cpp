#include "host/session/ProcessTransport.h"

#include "api/Failure.h"

using namespace Qt::StringLiterals;

namespace health {

namespace {
constexpr int EndMilliseconds = 2000; // a server usually stops much sooner after its input ends
constexpr qsizetype LongestErrors = 4096; // bytes
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
    m_errors.clear();
    m_process.reset(new QProcess);
    connect(m_process.get(), &QProcess::finished, this, &Transport::ended);
    connect(m_process.get(), &QProcess::readyReadStandardOutput, this, &Transport::readyRead);
    connect(m_process.get(), &QProcess::readyReadStandardError, this, &ProcessTransport::readErrors);
    m_process->start(m_program, m_arguments, QIODevice::ReadWrite | QIODevice::Unbuffered);
    if (!m_process->waitForStarted()) {
        const QString reason = m_process->errorString().section(u": "_s, -1); // without the name of the system call
        m_process.reset();
        throw Failure(u"The server program %1 cannot be started: %2."_s.arg(m_program, reason).toStdWString());
    }
}

void ProcessTransport::close()
{
    if (!m_process)
        return;
    m_process->disconnect(this);
    // Output of a server that keeps sending is ignored while it stops.
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

// Keeps the end only: QProcess would buffer everything.
void ProcessTransport::readErrors() { m_errors = (m_errors + m_process->readAllStandardError()).right(LongestErrors); }

QString ProcessTransport::endReason() const
{
    const QString said = m_process ? QString::fromUtf8(m_errors).trimmed() : QString();
    return said.isEmpty() ? u"The server process has stopped."_s
                          : u"The server process has stopped: %1"_s.arg(said.right(400));
}

}
