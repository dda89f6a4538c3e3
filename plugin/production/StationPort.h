// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

class FirmwareLoad;
class QComboBox;
class QSerialPort;
class QWidget;

// What the two windows with a serial port of their own do alike.

/// Waits at least so long with the event loop running, and runs it once more at the end: what has become due when
/// a busy machine comes back late is done before the wait is over. It goes by no clock that may be set.
void StationWait(int milliseconds);

/// The ports that can be opened now, in order. Those in use by anyone, this process included, are left out.
QStringList FreePortNames();

/// Offers these ports in place of the earlier ones and selects the first.
void OfferPorts(QComboBox& box, const QStringList& names);

/// Opens the port, closing it first when it is open; all settings but the rate stay. Tells the user when that
/// fails, in a box that may outlive the owner.
bool OpenStationPort(QWidget* owner, QSerialPort& port, const QString& name, qint32 baudRate);

/// The whole load, from the opening of the port to its closing. True when it succeeded and the owner still exists;
/// on false the owner may be gone, and the port with it.
bool LoadFirmware(QWidget* owner, QSerialPort& port, const QString& portName, qint32 baudRate,
                  const QString& imagePath, FirmwareLoad& load);
