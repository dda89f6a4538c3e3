// SPDX-License-Identifier: MIT
#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

/// The virtual receiver on a line of its own.
class TestReceiver {
public:
    explicit TestReceiver(const QStringList& options)
    {
        link = m_folder.filePath("receiver");
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start(QStringLiteral(GNSS_BUILD_BIN "/gnss-receiver"),
                        QStringList{"--link", link, "--seed", "7", "--die-with-parent"} + options);
        QByteArray said;
        while (!said.contains('\n') && m_process.waitForReadyRead(10000)) {
            said += m_process.readAllStandardOutput();
        }
        ready = said.startsWith("ready ");
    }
    ~TestReceiver() { Stop(); }
    TestReceiver(const TestReceiver&) = delete;
    TestReceiver& operator=(const TestReceiver&) = delete;

    /// Its line hangs up.
    void Stop()
    {
        if (m_process.state() == QProcess::NotRunning) {
            return;
        }
        m_process.terminate();
        if (!m_process.waitForFinished(5000)) {
            m_process.kill();
            m_process.waitForFinished();
        }
    }

    QProcess& Process() { return m_process; }

    QString link;
    bool ready = false;

private:
    QTemporaryDir m_folder;
    QProcess m_process;
};
