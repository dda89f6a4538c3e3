// SPDX-License-Identifier: MIT
#include "line/PortList.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QPointer>
#include <QSerialPort>
#include <QSerialPortInfo>

#include <algorithm>

namespace {

/// Position of the trailing number of `name`, or its length.
int TrailingNumber(const QString& name)
{
    int at = name.size();
    while (at > 0 && name.at(at - 1).unicode() >= '0' && name.at(at - 1).unicode() <= '9') {
        --at;
    }
    return at;
}

/// Compares two runs of digits of any length by value.
int CompareDigits(const QString& left, const QString& right)
{
    auto significant = [](const QString& digits) {
        int zeros = 0;
        while (zeros < digits.size() && digits.at(zeros) == QLatin1Char('0')) {
            ++zeros;
        }
        return digits.mid(zeros);
    };
    const QString a = significant(left);
    const QString b = significant(right);
    if (a.size() != b.size()) {
        return a.size() < b.size() ? -1 : 1;
    }
    return QString::compare(a, b);
}

/// The names that the system enumerates. That takes some 20 ms, and a start asks three times in a row.
QStringList SystemPortNames()
{
    constexpr qint64 validMs = 300;
    static QElapsedTimer age;
    static QStringList names;
    if (!age.isValid() || age.elapsed() > validMs) {
        names.clear();
        const QList<QSerialPortInfo> infos = QSerialPortInfo::availablePorts();
        for (const QSerialPortInfo& info : infos) {
            names.append(info.portName());
        }
        age.start();
    }
    return names;
}

QVector<QPointer<QSerialPort>>& WatchedPorts()
{
    static QVector<QPointer<QSerialPort>> ports;
    return ports;
}

} // namespace

QString PortFileName(const QString& portName)
{
    return portName.mid(portName.lastIndexOf(QLatin1Char('/')) + 1);
}

QString CanonicalPortPath(const QString& portName)
{
    if (portName.isEmpty()) {
        return {};
    }
    const QString path = portName.startsWith(QLatin1Char('/')) ? portName : QLatin1String("/dev/") + portName;
    const QString canonical = QFileInfo(path).canonicalFilePath();
    return canonical.isEmpty() ? QDir::cleanPath(path) : canonical;
}

bool PortNameLess(const QString& left, const QString& right)
{
    const int leftAt = TrailingNumber(left);
    const int rightAt = TrailingNumber(right);
    const int stem = QString::compare(left.left(leftAt), right.left(rightAt));
    if (stem != 0) {
        return stem < 0;
    }
    const int number = CompareDigits(left.mid(leftAt), right.mid(rightAt));
    return number != 0 ? number < 0 : left < right;
}

QVector<PortEntry> MergePorts(const QStringList& systemNames, const QString& listedPaths,
                              const std::function<QString(const QString&)>& canonical)
{
    QStringList system = systemNames;
    std::sort(system.begin(), system.end(), PortNameLess);
    QStringList listed = listedPaths.split(QLatin1Char(':'), Qt::SkipEmptyParts);
    std::stable_sort(listed.begin(), listed.end(), [](const QString& left, const QString& right) {
        return PortNameLess(PortFileName(left), PortFileName(right));
    });

    QVector<PortEntry> ports;
    QStringList known;
    for (const QString& name : system + listed) {
        const QString path = canonical(name);
        if (!known.contains(path)) {
            known.append(path);
            ports.append({name, path});
        }
    }
    return ports;
}

QVector<PortEntry> AvailablePorts()
{
    return MergePorts(SystemPortNames(), qEnvironmentVariable("GNSS_SERIAL_PORTS"));
}

void WatchOwnPort(QSerialPort* port)
{
    WatchedPorts().removeAll(QPointer<QSerialPort>());
    WatchedPorts().append(port);
}

QStringList OwnOpenPorts()
{
    QStringList paths;
    for (const QPointer<QSerialPort>& port : qAsConst(WatchedPorts())) {
        if (!port.isNull() && port->isOpen()) {
            paths.append(CanonicalPortPath(port->portName()));
        }
    }
    return paths;
}

bool ProbePort(const QString& portName)
{
    if (OwnOpenPorts().contains(CanonicalPortPath(portName))) {
        return false;
    }
    QSerialPort port;
    port.setPortName(portName);
    if (!port.open(QIODevice::ReadWrite)) {
        return false;
    }
    port.close();
    return true;
}

PortScan ScanPorts(const QVector<PortEntry>& ports, const QStringList& ownOpenPaths,
                   const std::function<bool(const QString&)>& probe)
{
    PortScan scan;
    for (const PortEntry& port : ports) {
        scan.names.append(port.name);
        if (!ownOpenPaths.contains(port.canonicalPath) && !probe(port.name)) {
            scan.busy.append(port.name);
        }
    }
    return scan;
}
