// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

class QSerialPort;

// What an open port needs beyond QSerialPort.

/// After each read: keeps a hung-up line from busying a core. Its notifiers would fire without end; the port stays
/// open until somebody closes it.
void SilenceDeadLine(const QSerialPort& port);

/// Waits until what flush() has handed to the system has left at the present rate.
void WaitUntilSent(const QSerialPort& port);

/// Writes bytes that are on the line when it returns, so that the port may be closed. Gives up on a line that does
/// not take them.
void WriteThrough(QSerialPort& port, const QByteArray& bytes);
