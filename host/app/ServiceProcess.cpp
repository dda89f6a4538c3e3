// SPDX-License-Identifier: MIT
#include "host/app/ServiceProcess.h"

#include <QDebug>
#include <QDir>

QStringList ServiceArguments(const ServiceSettings& settings)
{
    return QStringList{QStringLiteral("--folder"), settings.folder, QStringLiteral("--die-with-parent")} +
           settings.extra;
}

QString ReadyHost(const QByteArray& line)
{
    constexpr char kReady[] = "ready https://";
    return line.startsWith(kReady) ? QString::fromLatin1(line.mid(sizeof kReady - 1).trimmed()) : QString();
}

ServiceProcess::ServiceProcess(QObject* parent)
    : QObject(parent), m_process("assistance service", [this](const QByteArray& line) { return TakeLine(line); })
{
    connect(&m_process, &ChildProcess::Ended, this, [this](const QString& reason) {
        m_host.clear();
        emit Ended(reason);
    });
}

void ServiceProcess::Start(const ServiceSettings& settings)
{
    if (Running()) {
        return;
    }
    m_folder = settings.folder;
    if (QDir().mkpath(m_folder)) {
        m_process.Start(settings.program, ServiceArguments(settings));
    } else {
        m_process.End(QStringLiteral("no folder %1").arg(m_folder));
    }
}

void ServiceProcess::Stop()
{
    m_host.clear();
    m_process.Stop();
}

bool ServiceProcess::TakeLine(const QByteArray& line)
{
    const QString host = ReadyHost(line);
    if (host.isEmpty() || !m_host.isEmpty()) {
        return false;
    }
    m_host = host;
    qInfo().noquote() << "assistance service: ready on" << host;
    emit Ready(host);
    return true;
}
