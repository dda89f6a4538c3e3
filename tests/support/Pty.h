// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QElapsedTimer>
#include <QString>
#include <QtTest>

#include <fcntl.h>
#include <poll.h>
#include <stdlib.h>
#include <termios.h>
#include <unistd.h>

/// A pseudo-terminal whose far end the test holds.
class Pty {
public:
    Pty()
    {
        m_master = posix_openpt(O_RDWR | O_NOCTTY);
        grantpt(m_master);
        unlockpt(m_master);
        char name[128] = {};
        ptsname_r(m_master, name, sizeof(name));
        path = QString::fromLatin1(name);
        // Kept open, so that the line stays raw and no hang-up is seen between two openings.
        m_slave = ::open(name, O_RDWR | O_NOCTTY);
        termios settings = {};
        tcgetattr(m_slave, &settings);
        cfmakeraw(&settings);
        tcsetattr(m_slave, TCSANOW, &settings);
    }
    ~Pty() { Unplug(); }
    Pty(const Pty&) = delete;
    Pty& operator=(const Pty&) = delete;

    void Write(const QByteArray& bytes) const
    {
        QCOMPARE(::write(m_master, bytes.constData(), static_cast<size_t>(bytes.size())), bytes.size());
    }

    /// What the near end has sent by now.
    QByteArray Take() const
    {
        QByteArray bytes;
        pollfd waiting = {m_master, POLLIN, 0};
        char buffer[4096];
        while (m_master >= 0 && poll(&waiting, 1, 0) > 0 && (waiting.revents & POLLIN) != 0) {
            const ssize_t got = ::read(m_master, buffer, sizeof(buffer));
            if (got <= 0) {
                break;
            }
            bytes.append(buffer, static_cast<int>(got));
        }
        return bytes;
    }

    /// Waits for `count` bytes from the near end, with the event loop running.
    QByteArray Read(int count, int timeoutMs = 2000) const
    {
        QByteArray bytes;
        QElapsedTimer clock;
        clock.start();
        while (bytes.size() < count && clock.elapsed() < timeoutMs) {
            QTest::qWait(5);
            pollfd waiting = {m_master, POLLIN, 0};
            char buffer[4096];
            if (poll(&waiting, 1, 0) > 0 && (waiting.revents & POLLIN) != 0) {
                const ssize_t got = ::read(m_master, buffer, sizeof(buffer));
                if (got > 0) {
                    bytes.append(buffer, static_cast<int>(got));
                }
            }
        }
        return bytes;
    }

    /// Closes the far end, as a pulled cable does.
    void Unplug()
    {
        if (m_slave >= 0) {
            ::close(m_slave);
            ::close(m_master);
            m_slave = m_master = -1;
        }
    }

    QString path;

private:
    int m_master = -1;
    int m_slave = -1;
};
