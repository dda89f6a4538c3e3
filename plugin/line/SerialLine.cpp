// SPDX-License-Identifier: MIT
#include "line/SerialLine.h"

#include <QSerialPort>
#include <QSocketNotifier>
#include <QThread>

#ifdef Q_OS_UNIX
#include <termios.h>
#endif

namespace {

constexpr int flowControlledWaitMs = 5;
constexpr int stuckLineWaitMs = 20;
constexpr int stuckLineAttempts = 10;

} // namespace

void SilenceDeadLine(const QSerialPort& port)
{
    const QSerialPort::SerialPortError error = port.error();
    if (error == QSerialPort::ReadError || error == QSerialPort::ResourceError) {
        const QList<QSocketNotifier*> notifiers = port.findChildren<QSocketNotifier*>();
        for (QSocketNotifier* notifier : notifiers) {
            notifier->setEnabled(false);
        }
    }
}

void WaitUntilSent(const QSerialPort& port)
{
#ifdef Q_OS_UNIX
    if (port.flowControl() == QSerialPort::NoFlowControl) {
        tcdrain(port.handle());
        return;
    }
#endif
    // A far end that holds the line back would keep tcdrain() waiting for ever.
    QThread::msleep(flowControlledWaitMs);
}

void WriteThrough(QSerialPort& port, const QByteArray& bytes)
{
    port.write(bytes);
    // A flush moves one piece only.
    for (int attempt = 0; port.bytesToWrite() > 0 && attempt < stuckLineAttempts; ++attempt) {
        if (!port.flush()) {
            port.waitForBytesWritten(stuckLineWaitMs);
        }
    }
    WaitUntilSent(port);
}
