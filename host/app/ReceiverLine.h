// SPDX-License-Identifier: MIT
#pragma once

#include "host/app/ReceiverProcess.h"

class PluginSession;

/// The session's line: the virtual receiver, the port in the list of ports, and whether the plug-in's window has
/// it open.
class ReceiverLine : public QObject {
    Q_OBJECT

public:
    /// How long a receiver may take until its port can be opened.
    static constexpr int kReadyMilliseconds = 5000;

    ReceiverLine();

    const ReceiverProcess& Receiver() const { return m_receiver; }

    /// Starts the receiver and returns at once.
    void Start(const ReceiverSettings& settings) { m_receiver.Start(settings); }
    /// Waits for the receiver and puts its port into the list of ports. Runs the event loop. False when there is
    /// no port.
    bool Await();
    /// Puts a port into the list of ports, in place of an earlier one; an empty one only takes that one out.
    void UsePort(const QString& port);

    /// Opens the port in the window, once until TakeDown; does nothing while there is no port.
    void OpenFirst(PluginSession& plugin);
    /// Closes the line where the window has it open, and ends the receiver. `plugin` may be null.
    void Stop(PluginSession* plugin);
    /// Starts a receiver again behind Stop and opens its port in the window. `plugin` may be null.
    void StartAgain(const ReceiverSettings& settings, PluginSession* plugin);

    /// Ends the receiver when the plug-in is gone.
    void TakeDown();

Q_SIGNALS:
    void PortUsed(const QString& port);
    /// Stop or StartAgain has changed the receiver's state.
    void StateChanged();
    /// The receiver has ended by itself or could not be started.
    void Ended(const QString& reason);

private:
    ReceiverProcess m_receiver;
    QString m_port; // what was put into the list of ports
    bool m_opened = false;
};
