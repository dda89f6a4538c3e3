// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QObject>
#include <QProcess>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

/// A program of ours as a process of its own. What it writes goes to the debug log under its name.
class ChildProcess : public QObject {
    Q_OBJECT

public:
    /// Sees each line of the standard output; true keeps it out of the debug log.
    using TakeLine = std::function<bool(const QByteArray& line)>;

    ChildProcess(const char* name, TakeLine takeLine);
    ~ChildProcess() override;

    /// Starts a program and returns at once; one that still runs is ended first.
    void Start(const QString& program, const QStringList& arguments);

    /// Ends the process, which is not told; does nothing when there is none.
    void Stop();

    /// Ends the process, if there is one, and tells why.
    void End(const QString& reason);

    bool Running() const { return m_process != nullptr; }

Q_SIGNALS:
    /// The process has ended by itself or could not be started.
    void Ended(const QString& reason);

private:
    void ReadOutput();
    void ReadErrors();
    void ProcessFinished(int code, QProcess::ExitStatus status);
    void Log(const QByteArray& line) const;

    const char* m_name;
    TakeLine m_takeLine;
    std::unique_ptr<QProcess> m_process;
    QByteArray m_output;
    QByteArray m_errors;
};
