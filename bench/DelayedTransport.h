// A transport that delays answers, as a long line does: for measuring the cost of round trips.
#pragma once

#include "host/session/Transport.h"

#include <QElapsedTimer>
#include <QIODevice>

#include <deque>
#include <memory>

namespace health {

// Passes requests on immediately and each answer after the round-trip time.
class DelayedDevice : public QIODevice {
public:
    DelayedDevice(QIODevice& inner, int milliseconds)
        : m_inner(inner)
        , m_delay(milliseconds)
    {
        m_clock.start();
        open(ReadWrite | Unbuffered);
    }

    bool isSequential() const override { return true; }
    qint64 bytesAvailable() const override
    {
        const_cast<DelayedDevice*>(this)->take();
        qint64 count = 0;
        for (const Part& part : m_parts) {
            if (part.due <= m_clock.elapsed())
                count += part.bytes.size();
        }
        return count;
    }
    bool waitForBytesWritten(int milliseconds) override { return m_inner.waitForBytesWritten(milliseconds); }
    bool waitForReadyRead(int milliseconds) override
    {
        QElapsedTimer waited;
        waited.start();
        while (bytesAvailable() == 0 && waited.elapsed() < milliseconds)
            m_inner.waitForReadyRead(1);
        return bytesAvailable() > 0;
    }

protected:
    qint64 readData(char* data, qint64 most) override
    {
        const qint64 count = std::min(most, bytesAvailable());
        for (qint64 i = 0; i < count; ++i) {
            while (m_parts.front().bytes.size() == m_read) {
                m_parts.pop_front();
                m_read = 0;
            }
            data[i] = m_parts.front().bytes[m_read++];
        }
        while (!m_parts.empty() && m_parts.front().bytes.size() == m_read) {
            m_parts.pop_front();
            m_read = 0;
        }
        return count;
    }
    qint64 writeData(const char* data, qint64 size) override { return m_inner.write(data, size); }

private:
    struct Part {
        qint64 due;
        QByteArray bytes;
    };

    void take()
    {
        if (const QByteArray bytes = m_inner.readAll(); !bytes.isEmpty())
            m_parts.push_back({ m_clock.elapsed() + m_delay, bytes });
    }

    QIODevice& m_inner;
    int m_delay;
    QElapsedTimer m_clock;
    std::deque<Part> m_parts;
    qsizetype m_read = 0; // of the first part
};

class DelayedTransport : public Transport {
public:
    DelayedTransport(Transport& inner, int milliseconds)
        : m_inner(inner)
        , m_delay(milliseconds)
    {
    }

    void open() override
    {
        m_inner.open();
        m_device = std::make_unique<DelayedDevice>(*m_inner.device(), m_delay);
    }
    void close() override
    {
        m_device.reset();
        m_inner.close();
    }
    QIODevice* device() override { return m_device.get(); }
    bool isAlive() const override { return m_inner.isAlive(); }
    QString endReason() const override { return m_inner.endReason(); }

private:
    Transport& m_inner;
    int m_delay;
    std::unique_ptr<DelayedDevice> m_device;
};

}
