// SPDX-License-Identifier: MIT
#pragma once

#include "host/app/ChildProcess.h"

#include <QTemporaryDir>

#include <memory>

/// What the virtual receiver is started with.
struct ReceiverSettings {
    QString program;
    int product = 0;
    bool idle = false;
    QString capture;
    QString speed;
    QStringList extra;
    QString link; ///< path of the port; empty for one in a folder that only this process uses
};

/// The receiver's command line for a line at `link`.
QStringList ReceiverArguments(const ReceiverSettings& settings, const QString& link);

/// The path in the line by which the receiver says that its port can be opened; empty for every other line.
QString ReadyPath(const QByteArray& line);

/// The virtual receiver as a process of its own, on a link in a folder that only this process uses.
class ReceiverProcess : public QObject {
    Q_OBJECT

public:
    enum class State { Off, Starting, Ready, Ended };

    explicit ReceiverProcess(QObject* parent = nullptr);

    /// Starts the program and returns at once. Each start has a link of its own name.
    void Start(const ReceiverSettings& settings);

    /// Runs the event loop, without user input, until the port can be opened, the process has ended or
    /// `milliseconds` are over. True when the port can be opened.
    bool WaitReady(int milliseconds);

    /// Ends the process; does nothing when there is none.
    void Stop();

    State CurrentState() const { return m_state; }
    /// The state in words for the user.
    QString StateText() const;
    /// Path of the port once it is ready, else empty.
    QString Port() const { return m_port; }
    /// Why the receiver is not running; empty while it is.
    QString Reason() const { return m_reason; }

Q_SIGNALS:
    void Ready(const QString& port);
    /// The process has ended by itself or could not be started.
    void Ended(const QString& reason);

private:
    bool TakeLine(const QByteArray& line);
    void End(const QString& reason);

    std::unique_ptr<QTemporaryDir> m_folder;
    ChildProcess m_process;
    State m_state = State::Off;
    QString m_port;
    QString m_reason;
    int m_starts = 0;
};
