// SPDX-License-Identifier: MIT
#include "host/app/ReceiverProcess.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QTimer>

QStringList ReceiverArguments(const ReceiverSettings& settings, const QString& link)
{
    QStringList arguments{QStringLiteral("--link"), link, QStringLiteral("--die-with-parent"),
                          QStringLiteral("--product"), QString::number(settings.product)};
    if (settings.idle) {
        arguments << QStringLiteral("--idle");
    }
    if (!settings.capture.isEmpty()) {
        arguments << QStringLiteral("--capture") << settings.capture;
    }
    if (!settings.speed.isEmpty()) {
        arguments << QStringLiteral("--speed") << settings.speed;
    }
    return arguments + settings.extra;
}

QString ReadyPath(const QByteArray& line)
{
    constexpr char kReady[] = "ready ";
    return line.startsWith(kReady) ? QFile::decodeName(line.mid(sizeof kReady - 1).trimmed()) : QString();
}

ReceiverProcess::ReceiverProcess(QObject* parent)
    : QObject(parent), m_process("virtual receiver", [this](const QByteArray& line) { return TakeLine(line); })
{
    connect(&m_process, &ChildProcess::Ended, this, &ReceiverProcess::End);
}

void ReceiverProcess::Start(const ReceiverSettings& settings)
{
    Stop();
    m_reason.clear();
    m_state = State::Starting;
    if (!m_folder) {
        m_folder = std::make_unique<QTemporaryDir>(QDir::tempPath() + QStringLiteral("/gnss-workbench-XXXXXX"));
    }
    if (!m_folder->isValid()) {
        m_process.End(tr("no folder for its port: %1").arg(m_folder->errorString()));
        return;
    }
    // The name goes into the names of captures: it tells hosts apart that share a folder, and each start from the
    // one before, so that the workbench can change from one to the next while it is open.
    QString name = QStringLiteral("gnss-virtual-%1").arg(QCoreApplication::applicationPid());
    if (m_starts > 0) {
        name += QStringLiteral("-%1").arg(m_starts + 1);
    }
    ++m_starts;
    const QString link = settings.link.isEmpty() ? m_folder->filePath(name) : settings.link;
    m_process.Start(settings.program, ReceiverArguments(settings, link));
}

bool ReceiverProcess::WaitReady(int milliseconds)
{
    if (m_state != State::Starting) {
        return m_state == State::Ready;
    }
    QEventLoop loop;
    connect(this, &ReceiverProcess::Ready, &loop, &QEventLoop::quit);
    connect(this, &ReceiverProcess::Ended, &loop, &QEventLoop::quit);
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec(QEventLoop::ExcludeUserInputEvents);
    return m_state == State::Ready;
}

void ReceiverProcess::Stop()
{
    m_state = State::Off;
    m_port.clear();
    m_process.Stop();
}

QString ReceiverProcess::StateText() const
{
    switch (m_state) {
    case State::Off:
        return tr("Virtual receiver off");
    case State::Starting:
        return tr("Virtual receiver starting");
    case State::Ready:
        return tr("Virtual receiver on %1").arg(QFileInfo(m_port).fileName());
    case State::Ended:
        return tr("Virtual receiver gone: %1").arg(m_reason);
    }
    return {};
}

bool ReceiverProcess::TakeLine(const QByteArray& line)
{
    const QString port = ReadyPath(line);
    if (port.isEmpty() || m_state != State::Starting) {
        return false;
    }
    m_state = State::Ready;
    m_port = port;
    qInfo().noquote() << "virtual receiver: ready on" << port;
    emit Ready(port);
    return true;
}

void ReceiverProcess::End(const QString& reason)
{
    m_state = State::Ended;
    m_reason = reason;
    emit Ended(reason);
}
