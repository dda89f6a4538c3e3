// SPDX-License-Identifier: MIT
#include "production/StationPort.h"

#include "base/MessageBoxes.h"
#include "line/PortList.h"
#include "production/FirmwareLoad.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QPointer>
#include <QSerialPort>
#include <QThread>

namespace {

class StationPort {
    Q_DECLARE_TR_FUNCTIONS(StationPort)
};

constexpr int eventsAtOnceMs = 100;

} // namespace

void StationWait(int milliseconds)
{
    const QDeadlineTimer end(milliseconds, Qt::PreciseTimer);
    while (!end.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, eventsAtOnceMs);
        // It comes back at once when nothing is pending: without a pause a wait would keep a core busy.
        QThread::msleep(1);
    }
    QCoreApplication::processEvents(QEventLoop::AllEvents, eventsAtOnceMs);
}

QStringList FreePortNames()
{
    const PortScan scan = ScanPorts(AvailablePorts(), {});
    QStringList names;
    for (const QString& name : scan.names) {
        if (!scan.busy.contains(name)) {
            names.append(name);
        }
    }
    return names;
}

void OfferPorts(QComboBox& box, const QStringList& names)
{
    box.clear();
    box.insertItems(0, names);
    box.setCurrentIndex(0);
}

bool OpenStationPort(QWidget* owner, QSerialPort& port, const QString& name, qint32 baudRate)
{
    if (port.isOpen()) {
        port.close();
    }
    port.setPortName(name);
    port.setBaudRate(baudRate, QSerialPort::AllDirections);
    if (port.open(QIODevice::ReadWrite)) {
        return true;
    }
    ShowWarningBox(owner, QStringLiteral("GNSS"),
                   name + StationPort::tr("串口打开失败，请确认串口存在且未被占用"));
    return false;
}

bool LoadFirmware(QWidget* owner, QSerialPort& port, const QString& portName, qint32 baudRate,
                  const QString& imagePath, FirmwareLoad& load)
{
    if (!OpenStationPort(owner, port, portName, baudRate)) {
        return false;
    }
    const FirmwareLoadOutcome outcome = load.Run(imagePath);
    if (outcome == FirmwareLoadOutcome::OwnerGone) {
        return false;
    }
    const QPointer<QWidget> guard(owner);
    if (outcome == FirmwareLoadOutcome::NoFile) {
        ShowCriticalBox(nullptr, StationPort::tr("提示"), StationPort::tr("打开文件失败"));
        if (guard.isNull()) {
            return false;
        }
    }
    port.close();
    return outcome == FirmwareLoadOutcome::Loaded;
}
