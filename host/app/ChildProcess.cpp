// SPDX-License-Identifier: MIT
#include "host/app/ChildProcess.h"

#include <QDebug>
#include <QFileInfo>

#include <utility>

namespace {

constexpr int kMaxPartialLine = 64 * 1024;
constexpr int kStopMilliseconds = 1000;

/// Takes the complete lines out of `buffer`. A line without an end is given up at a size that no message has.
QList<QByteArray> TakeLines(QByteArray& buffer)
{
    QList<QByteArray> lines = buffer.split('\n');
    buffer = lines.takeLast();
    if (buffer.size() > kMaxPartialLine) {
        buffer.clear();
    }
    for (QByteArray& line : lines) {
        line = line.trimmed();
    }
    return lines;
}

} // namespace

ChildProcess::ChildProcess(const char* name, TakeLine takeLine) : m_name(name), m_takeLine(std::move(takeLine)) {}

ChildProcess::~ChildProcess()
{
    Stop();
}

void ChildProcess::Start(const QString& program, const QStringList& arguments)
{
    Stop();
    m_output.clear();
    m_errors.clear();
    if (!QFileInfo(program).isExecutable()) {
        End(tr("no such program: %1").arg(program));
        return;
    }
    m_process = std::make_unique<QProcess>();
    connect(m_process.get(), &QProcess::readyReadStandardOutput, this, &ChildProcess::ReadOutput);
    connect(m_process.get(), &QProcess::readyReadStandardError, this, &ChildProcess::ReadErrors);
    connect(m_process.get(), &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) {
            End(m_process->errorString());
        }
    });
    connect(m_process.get(), qOverload<int, QProcess::ExitStatus>(&QProcess::finished), this,
            &ChildProcess::ProcessFinished);
    m_process->setStandardInputFile(QProcess::nullDevice());
    m_process->start(program, arguments);
}

void ChildProcess::Stop()
{
    if (!m_process) {
        return;
    }
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

void ChildProcess::End(const QString& reason)
{
    Stop();
    qWarning().noquote().nospace() << m_name << ": " << reason;
    emit Ended(reason);
}

void ChildProcess::ReadOutput()
{
    m_output += m_process->readAllStandardOutput();
    for (const QByteArray& line : TakeLines(m_output)) {
        if (!m_takeLine(line)) {
            Log(line);
        }
    }
}

void ChildProcess::ReadErrors()
{
    if (!m_process) {
        return; // stopped by whoever was told of its last line
    }
    m_errors += m_process->readAllStandardError();
    for (const QByteArray& line : TakeLines(m_errors)) {
        Log(line);
    }
}

void ChildProcess::Log(const QByteArray& line) const
{
    if (!line.isEmpty()) {
        qInfo().noquote().nospace() << m_name << ": " << QString::fromLocal8Bit(line);
    }
}

void ChildProcess::ProcessFinished(int code, QProcess::ExitStatus status)
{
    ReadOutput();
    ReadErrors();
    const QString last = QString::fromLocal8Bit(m_errors.trimmed());
    QString reason =
        status == QProcess::CrashExit ? tr("it was ended by a signal") : tr("it ended with status %1").arg(code);
    if (!last.isEmpty()) {
        reason += QStringLiteral(" (%1)").arg(last);
    }
    End(reason);
}
