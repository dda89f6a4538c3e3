// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QStringList>

#include <memory>

class QSerialPort;
class QTimer;

/// The line to the receiver: the serial port, its 10 ms poll and the raw capture of what comes. It mirrors its
/// state in Global::serialOpen, currentPortName, currentBaudRate and busyPortNames. It opens no box and writes no
/// status line: its signals, all direct, tell what happened.
class SerialLink : public QObject {
    Q_OBJECT

public:
    explicit SerialLink(QObject* parent = nullptr);
    ~SerialLink() override;

    QSerialPort* Port() const { return m_port.get(); }
    bool IsOpen() const;

    /// Looks for ports anew; the own open one is not busy.
    void ScanPorts();
    QStringList PortNames() const { return m_portNames; }

    /// Closes an open port, else opens Global::currentPortName at Global::currentBaudRate.
    void Switch();

    /// Chooses a port; an open line goes over to it.
    void ChangePort(const QString& name);

    /// Bits per second, at once when the port is open.
    void ChangeBaudRate(quint32 rate);

    /// One tick: reads what has come, appends it to the raw capture, has it decoded, then hands it on.
    void Poll();

    /// What has come and no tick has taken; it is lost to the capture.
    QByteArray TakeUnread();

    /// False when the port is closed.
    bool Send(const char* bytes, qint64 length);

    /// Sends the byte that wakes a sleeping receiver, at the one rate at which it listens.
    void WakeUp();

    /// Folder of raw captures; empty is the default one. An open line begins a new capture in a given one.
    void SetSaveDirectory(const QString& folder);

    /// The silence probe's timer, which nothing starts; bytes and a close stop it.
    QTimer* SilenceTimer() const { return m_silenceTimer; }

    /// Nothing ticks any more, and the port is closed. For the end of the window.
    void StopTicking();
    void ClosePort();

signals:
    void Opened();
    void Closed();
    /// The line went over to another port, which may have failed to open.
    void Switched();
    void NoPortChosen();
    void OpenFailed();
    /// After decoding.
    void BytesReceived(const QByteArray& bytes);

private:
    void BeginCapture();

    std::unique_ptr<QSerialPort> m_port;
    QTimer* m_pollTimer;
    QTimer* m_silenceTimer;
    QStringList m_portNames;
    QString m_capturePath;
    QString m_saveDirectory;
};
