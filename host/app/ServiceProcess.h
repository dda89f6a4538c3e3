// SPDX-License-Identifier: MIT
#pragma once

#include "host/app/ChildProcess.h"

/// What the local assistance service is started with.
struct ServiceSettings {
    QString program;
    QString folder; ///< where it keeps its certificate and the client's key
    QStringList extra;
};

/// The service's command line.
QStringList ServiceArguments(const ServiceSettings& settings);

/// Host and port in the line by which the service says that it can be asked; empty for every other line.
QString ReadyHost(const QByteArray& line);

/// The local assistance service as a process of its own.
class ServiceProcess : public QObject {
    Q_OBJECT

public:
    explicit ServiceProcess(QObject* parent = nullptr);

    /// Starts the program and returns at once; does nothing while one runs.
    void Start(const ServiceSettings& settings);

    /// Ends the process; does nothing when there is none.
    void Stop();

    bool Running() const { return m_process.Running(); }
    /// "127.0.0.1:PORT" once it can be asked, else empty.
    QString Host() const { return m_host; }
    QString Folder() const { return m_folder; }

Q_SIGNALS:
    void Ready(const QString& host);
    /// The process has ended by itself or could not be started.
    void Ended(const QString& reason);

private:
    bool TakeLine(const QByteArray& line);

    ChildProcess m_process;
    QString m_host;
    QString m_folder;
};
