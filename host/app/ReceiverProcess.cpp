#include "ReceiverProcess.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QTimer>

namespace {

constexpr int kMaxPartialLine = 64 * 1024;
constexpr int kStopMilliseconds = 1000;

/// Takes the complete lines out of `buffer`. A line without an end is given up at a size that no message has.
QList<QByteArray> TakeLines(QByteArray& buffer)
{
    QList<QByteArray> lines = buffer.split('\n');
    buffer = lines.takeLast();
    if (buffer.size() > kMaxPartialLine)
        buffer.clear();
    return lines;
}

} // namespace

QStringList ReceiverArguments(const ReceiverSettings& settings, const QString& link)
{
    QStringList arguments{QStringLiteral("--link"), link, QStringLiteral("--die-with-parent"),
                          QStringLiteral("--product"), QString::number(settings.product)};
    if (settings.idle)
        arguments << QStringLiteral("--idle");
    if (!settings.capture.isEmpty())
        arguments << QStringLiteral("--capture") << settings.capture;
    if (!settings.speed.isEmpty())
        arguments << QStringLiteral("--speed") << settings.speed;
    return arguments + settings.extra;
}

QString ReadyPath(const QByteArray& line)
{
    constexpr char kReady[] = "ready ";
    return line.startsWith(kReady) ? QFile::decodeName(line.mid(sizeof kReady - 1).trimmed()) : QString();
}

ReceiverProcess::ReceiverProcess(QObject* parent) : QObject(parent) {}

ReceiverProcess::~ReceiverProcess()
{
    Stop();
}

void ReceiverProcess::Start(const ReceiverSettings& settings)
{
    Stop();
    m_reason.clear();
    m_output.clear();
    m_errors.clear();
    m_state = State::Starting;
    if (!m_folder) {
        m_folder = std::make_unique<QTemporaryDir>(QDir::tempPath() + QStringLiteral("/gnss-workbench-XXXXXX"));
    }
    if (!m_folder->isValid()) {
        End(tr("no folder for its port: %1").arg(m_folder->errorString()));
        return;
    }
    // The name goes into the names of captures: it tells hosts apart that share a folder, and each start from the
    // one before, so that the workbench can change from one to the next while it is open.
    QString name = QStringLiteral("gnss-virtual-%1").arg(QCoreApplication::applicationPid());
    if (m_starts > 0)
        name += QStringLiteral("-%1").arg(m_starts + 1);
    ++m_starts;
    if (!QFileInfo(settings.program).isExecutable()) {
        End(tr("no such program: %1").arg(settings.program));
        return;
    }
    m_process = std::make_unique<QProcess>();
    connect(m_process.get(), &QProcess::readyReadStandardOutput, this, &ReceiverProcess::ReadOutput);
    connect(m_process.get(), &QProcess::readyReadStandardError, this, &ReceiverProcess::ReadErrors);
    connect(m_process.get(), &QProcess::errorOccurred, this, &ReceiverProcess::ProcessError);
    connect(m_process.get(), qOverload<int, QProcess::ExitStatus>(&QProcess::finished), this,
            &ReceiverProcess::ProcessFinished);
    m_process->setStandardInputFile(QProcess::nullDevice());
    const QString link = settings.link.isEmpty() ? m_folder->filePath(name) : settings.link;
    m_process->start(settings.program, ReceiverArguments(settings, link));
}

bool ReceiverProcess::WaitReady(int milliseconds)
{
    if (m_state != State::Starting)
        return m_state == State::Ready;
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

void ReceiverProcess::ReadOutput()
{
    m_output += m_process->readAllStandardOutput();
    for (const QByteArray& line : TakeLines(m_output))
        TakeLine(line.trimmed());
}

void ReceiverProcess::ReadErrors()
{
    m_errors += m_process->readAllStandardError();
    for (const QByteArray& line : TakeLines(m_errors)) {
        if (!line.trimmed().isEmpty())
            qInfo().noquote() << "virtual receiver:" << QString::fromLocal8Bit(line.trimmed());
    }
}

void ReceiverProcess::TakeLine(const QByteArray& line)
{
    const QString port = ReadyPath(line);
    if (!port.isEmpty() && m_state == State::Starting) {
        m_state = State::Ready;
        m_port = port;
        qInfo().noquote() << "virtual receiver: ready on" << port;
        emit Ready(port);
    } else if (!line.isEmpty()) {
        qInfo().noquote() << "virtual receiver:" << QString::fromLocal8Bit(line);
    }
}

void ReceiverProcess::ProcessError(QProcess::ProcessError error)
{
    if (error == QProcess::FailedToStart)
        End(m_process->errorString());
}

void ReceiverProcess::ProcessFinished(int code, QProcess::ExitStatus status)
{
    ReadOutput();
    ReadErrors();
    const QString last = QString::fromLocal8Bit(m_errors.trimmed());
    QString reason =
        status == QProcess::CrashExit ? tr("it was ended by a signal") : tr("it ended with status %1").arg(code);
    if (!last.isEmpty())
        reason += QStringLiteral(" (%1)").arg(last);
    End(reason);
}

void ReceiverProcess::End(const QString& reason)
{
    m_state = State::Ended;
    m_reason = reason;
    qWarning().noquote() << "virtual receiver:" << reason;
    emit Ended(reason);
}
