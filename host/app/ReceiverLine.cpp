// SPDX-License-Identifier: MIT
#include "host/app/ReceiverLine.h"

#include "host/app/PluginSession.h"
#include "host/app/ProcessFacts.h"
#include "host/app/SerialPortsVariable.h"

ReceiverLine::ReceiverLine()
{
    connect(&m_receiver, &ReceiverProcess::Ended, this, &ReceiverLine::Ended);
}

bool ReceiverLine::Await()
{
    const bool ready = m_receiver.WaitReady(kReadyMilliseconds);
    UsePort(m_receiver.Port());
    return ready;
}

void ReceiverLine::UsePort(const QString& port)
{
    if (!m_port.isEmpty()) {
        SerialPortsVariable::Remove(m_port);
    }
    m_port = port;
    if (m_port.isEmpty()) {
        return;
    }
    SerialPortsVariable::Add(m_port);
    emit PortUsed(m_port);
}

void ReceiverLine::OpenFirst(PluginSession& plugin)
{
    if (m_opened || m_port.isEmpty()) {
        return;
    }
    m_opened = true;
    plugin.OpenPort(m_port);
}

void ReceiverLine::Stop(PluginSession* plugin)
{
    m_opened = true; // from here on the line is opened and closed by Stop and StartAgain
    if (plugin && !m_receiver.Port().isEmpty() && IsOpenInThisProcess(m_receiver.Port())) {
        plugin->SwitchPort();
    }
    m_receiver.Stop();
    UsePort(m_receiver.Port());
    emit StateChanged();
}

void ReceiverLine::StartAgain(const ReceiverSettings& settings, PluginSession* plugin)
{
    Start(settings);
    emit StateChanged();
    const bool ready = Await();
    emit StateChanged();
    if (!ready || !plugin) {
        return;
    }
    plugin->ChoosePort(m_port);
    if (!IsOpenInThisProcess(m_port)) {
        plugin->SwitchPort();
    }
}

void ReceiverLine::TakeDown()
{
    m_opened = false;
    m_receiver.Stop();
    UsePort(QString());
}
