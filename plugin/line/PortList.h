// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

#include <functional>

class QSerialPort;

/// A serial port that can be offered.
struct PortEntry {
    QString name;          ///< as shown and opened: the system's name, or a path
    QString canonicalPath; ///< the device behind it: two names of one device share it
};

/// The port's name as it stands in a file name: the last path component.
QString PortFileName(const QString& portName);

/// The device behind a port's name, links resolved. `portName` is a path or a name under /dev.
QString CanonicalPortPath(const QString& portName);

/// Orders ports by name without its trailing number and then by that number, so that 10 follows 9.
bool PortNameLess(const QString& left, const QString& right);

/// The list to offer: the system's ports in order, then those of `listedPaths` (':'-separated paths that the
/// system does not enumerate) ordered by their last component. A device that is already in the list is left out.
QVector<PortEntry> MergePorts(const QStringList& systemNames, const QString& listedPaths,
                              const std::function<QString(const QString&)>& canonical = CanonicalPortPath);

/// The ports of this machine, with those of the environment variable GNSS_SERIAL_PORTS.
QVector<PortEntry> AvailablePorts();

/// Takes a port of this process into account for as long as it lives.
void WatchOwnPort(QSerialPort* port);

/// The canonical paths of the watched ports that are open now.
QStringList OwnOpenPorts();

/// Whether the port can be opened now; it is closed again. One that this process has open is in use: a second open
/// would disturb the line settings of the live link.
bool ProbePort(const QString& portName);

struct PortScan {
    QStringList names;
    QStringList busy;
};

/// Probes every port but the caller's own, given by their canonical paths: those are not busy for the caller.
PortScan ScanPorts(const QVector<PortEntry>& ports, const QStringList& ownOpenPaths,
                   const std::function<bool(const QString&)>& probe = ProbePort);
