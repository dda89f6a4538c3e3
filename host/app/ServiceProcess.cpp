#include "ServiceProcess.h"

#include <QDebug>
#include <QDir>
#include <QFileInfo>

namespace {

constexpr int kMaxPartialLine = 64 * 1024;
constexpr int kStopMilliseconds = 1000;

QList<QByteArray> TakeLines(QByteArray& buffer)
{
    QList<QByteArray> lines = buffer.split('\n');
    buffer = lines.takeLast();
    if (buffer.size() > kMaxPartialLine)
        buffer.clear();
    return lines;
}

} // namespace

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

ServiceProcess::ServiceProcess(QObject* parent) : QObject(parent) {}

ServiceProcess::~ServiceProcess()
{
    Stop();
}

void ServiceProcess::Start(const ServiceSettings& settings)
{
    if (Running())
        return;
    m_folder = settings.folder;
    m_output.clear();
    m_errors.clear();
    if (!QFileInfo(settings.program).isExecutable()) {
        End(QStringLiteral("no such program: %1").arg(settings.program));
        return;
    }
    if (!QDir().mkpath(m_folder)) {
        End(QStringLiteral("no folder %1").arg(m_folder));
        return;
    }
    m_process = std::make_unique<QProcess>();
    connect(m_process.get(), &QProcess::readyReadStandardOutput, this, &ServiceProcess::ReadOutput);
    connect(m_process.get(), &QProcess::readyReadStandardError, this, &ServiceProcess::ReadErrors);
    connect(m_process.get(), &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            End(m_process->errorString());
    });
    connect(m_process.get(), qOverload<int, QProcess::ExitStatus>(&QProcess::finished), this,
            [this](int code, QProcess::ExitStatus status) {
                ReadOutput();
                ReadErrors();
                End(status == QProcess::CrashExit ? QStringLiteral("it was ended by a signal")
                                                  : QStringLiteral("it ended with status %1").arg(code));
            });
    m_process->setStandardInputFile(QProcess::nullDevice());
    m_process->start(settings.program, ServiceArguments(settings));
}

void ServiceProcess::Stop()
{
    m_host.clear();
    if (!m_process)
        return;
    m_process->disconnect(this);
    if (m_process->state() != QProcess::NotRunning) {
        m_process->terminate();
        if (!m_process->waitForFinished(kStopMilliseconds)) {
            m_process->kill();
            m_process->waitForFinished(kStopMilliseconds);
        }
    }
    // A process ends inside its own signals too: it goes when the stack is clean.
    m_process.release()->deleteLater();
}

void ServiceProcess::ReadOutput()
{
    m_output += m_process->readAllStandardOutput();
    for (const QByteArray& line : TakeLines(m_output)) {
        const QString host = ReadyHost(line);
        if (host.isEmpty() || !m_host.isEmpty())
            continue;
        m_host = host;
        qInfo().noquote() << "assistance service: ready on" << host;
        emit Ready(host);
    }
}

void ServiceProcess::ReadErrors()
{
    m_errors += m_process->readAllStandardError();
    for (const QByteArray& line : TakeLines(m_errors)) {
        if (!line.trimmed().isEmpty())
            qInfo().noquote() << "assistance service:" << QString::fromLocal8Bit(line.trimmed());
    }
}

void ServiceProcess::End(const QString& reason)
{
    Stop();
    qWarning().noquote() << "assistance service:" << reason;
    emit Ended(reason);
}
