#pragma once

#include "host/session/Transport.h"

#include <QProcess>

#include <memory>

namespace health {

// The server program as a child process; frames on its standard input and output.
class ProcessTransport : public Transport {
    Q_OBJECT
public:
    ProcessTransport(QString program, QStringList arguments);
    ~ProcessTransport() override;

    void open() override;
    void close() override;
    QIODevice* device() override { return m_process.get(); }
    bool isAlive() const override { return m_process && m_process->state() != QProcess::NotRunning; }
    bool hasLocalClock() const override { return true; }
    QString endReason() const override;

private:
    void readErrors();

    QString m_program;
    QStringList m_arguments;
    std::unique_ptr<QProcess, DeleteLater> m_process;
    QByteArray m_errors; // the end of its standard error
};

}
