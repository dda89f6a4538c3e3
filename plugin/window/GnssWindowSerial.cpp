// SPDX-License-Identifier: MIT
#include "window/GnssWindow.h"

#include "base/FileDialogs.h"
#include "base/MessageBoxes.h"
#include "base/ProcessState.h"
#include "base/StatusLog.h"
#include "bridge/ClassGnss.h"
#include "line/PortList.h"
#include "line/RawCapture.h"
#include "line/SerialLine.h"
#include "views/log/HexViewWin.h"
#include "widgets/CustomBaudRateWin.h"
#include "widgets/MyButton.h"

#include "host/support/ImageManager.h"

#include <QDateTime>
#include <QDebug>
#include <QSerialPort>
#include <QTimer>

namespace {

constexpr int pollPeriodMs = 10;
constexpr qint32 wakeUpBaudRate = 115200;

} // namespace

void GnssWindow::ScanPortNames()
{
    QStringList ownPaths;
    if (serialPort->isOpen()) {
        // By the name that it was opened with: portName() of a path is a shortened one.
        ownPaths.append(CanonicalPortPath(Global::currentPortName));
    }
    const PortScan scan = ScanPorts(AvailablePorts(), ownPaths);
    portNames = scan.names;
    Global::busyPortNames = scan.busy;
}

void GnssWindow::ShowPortNames()
{
    m_portBtn->SetMenuEntries(portNames, Global::busyPortNames);
    // Only a name that is in the list is selected: selecting another one would add it.
    if (portNames.contains(Global::currentPortName)) {
        m_portBtn->SelectEntry(Global::currentPortName);
    }
}

void GnssWindow::SlotUpdatePortInfo()
{
    ScanPortNames();
    ShowPortNames();
}

void GnssWindow::SetLinkPicture(bool open)
{
    const QString picture = open ? QStringLiteral(":/images/images/gnss/uart_link.png")
                                 : QStringLiteral(":/images/images/gnss/uart_unlink.png");
    m_portBtn->SetIcon(QIcon(ImageManager::GetPixmapObject(picture)));
    // The tool tip states what just happened, not what a click will do.
    m_portBtn->SetToolTip(open ? tr("打开串口") : tr("关闭串口"));
}

void GnssWindow::SlotSwitchPort()
{
    if (serialPort->isOpen()) {
        recvTimer->stop();
        serialPort->close();
        Global::serialOpen = false;
        SetLinkPicture(false);
        AppendStatus(tr("关闭串口 ") + Global::currentPortName);
        if (noDataTimer->isActive()) {
            noDataTimer->stop();
        }
        return;
    }

    serialPort->setPortName(Global::currentPortName);
    if (Global::currentPortName.isEmpty()) {
        ShowWarningBox(this, QStringLiteral("GNSS"), tr("当前无可用串口，请检查串口连接状态"));
        return;
    }
    serialPort->setBaudRate(static_cast<qint32>(Global::currentBaudRate), QSerialPort::AllDirections);
    recvTimer->start(pollPeriodMs);
    if (!serialPort->open(QIODevice::ReadWrite)) {
        // The poll stays on; it finds a closed port until the next successful open.
        ShowWarningBox(this, QStringLiteral("GNSS"),
                       Global::currentPortName + QLatin1String(" open failed, please check com is busy or exist"));
        return;
    }
    Global::serialOpen = true;
    NewRawCapture();
    SetLinkPicture(true);
    AppendStatus(tr("打开串口 ") + Global::currentPortName);
}

void GnssWindow::SlotChangePort(QString portStr)
{
    if (portStr == Global::currentPortName) {
        return;
    }
    Global::currentPortName = portStr;
    if (serialPort->isOpen()) {
        serialPort->close();
        serialPort->setPortName(portStr);
        serialPort->setBaudRate(static_cast<qint32>(Global::currentBaudRate), QSerialPort::AllDirections);
        serialPort->open(QIODevice::ReadWrite);
        NewRawCapture();
        AppendStatus(tr("串口切换至 ") + portStr);
    }
}

void GnssWindow::SlotChangeBaudRate(QString baudRateStr)
{
    Global::currentBaudRate = baudRateStr.toUInt();
    if (serialPort->isOpen()) {
        serialPort->setBaudRate(static_cast<qint32>(Global::currentBaudRate), QSerialPort::AllDirections);
    }
    m_baudBtn->SetText(baudRateStr);
}

void GnssWindow::SlotAddBaudRate()
{
    delete customBaudWin;
    customBaudWin = new CustomBaudRateWin;
    customBaudWin->setAttribute(Qt::WA_DeleteOnClose);
    connect(customBaudWin, &CustomBaudRateWin::addCustomBaudRate, m_baudBtn, &MyButton::SlotMenuAddAction);
    customBaudWin->show();
}

void GnssWindow::NewRawCapture()
{
    rawDataPath = RawCapturePath(saveDirectory, Global::currentPortName, QDateTime::currentDateTime());
    CreateRawCapture(rawDataPath);
}

void GnssWindow::SlotSaveBtnClicked()
{
    const QPointer<GnssWindow> guard(this);
    const QString chosen = AskFolder(this, QStringLiteral("Selecting a path for saving serial port data."));
    if (guard.isNull()) {
        return;
    }
    // A cancelled choice goes back to the default directory.
    saveDirectory = chosen;
    if (!saveDirectory.isEmpty() && serialPort->isOpen()) {
        NewRawCapture();
    }
}

void GnssWindow::SlotRecivePostMsg()
{
    if (!serialPort->isOpen()) {
        return;
    }
    const QByteArray bytes = serialPort->readAll();
    SilenceDeadLine(*serialPort);
    if (bytes.isEmpty()) {
        return;
    }
    if (noDataTimer->isActive()) {
        noDataTimer->stop();
    }
    AppendRawCapture(rawDataPath, bytes);
    ClassGnss::GnssDecode(reinterpret_cast<const quint8*>(bytes.constData()), static_cast<quint32>(bytes.size()));
    if (hexView != nullptr) {
        hexView->OnBytes(bytes);
    }
}

void GnssWindow::SlotSendPackets(uint8_t* buffer, int len)
{
    if (!serialPort->isOpen()) {
        ShowWarningBox(this, QStringLiteral("GNSS"), QStringLiteral("Please open port before send packet!"));
        return;
    }
    if (len > 0) {
        serialPort->write(reinterpret_cast<const char*>(buffer), len);
    }
}

void GnssWindow::SlotSendHexData(QByteArray bytes)
{
    if (!serialPort->isOpen()) {
        ShowWarningBox(this, QStringLiteral("GNSS"), QStringLiteral("Please open port before send packet!"));
        return;
    }
    serialPort->write(bytes);
}

void GnssWindow::SlotSendWakeUp()
{
    WakeUpReceiver();
}

void GnssWindow::WakeUpReceiver()
{
    qDebug().noquote() << "GnssCbType::CB_SLEEP_WAKEUP";
    if (!serialPort->isOpen()) {
        return;
    }
    const qint32 rate = serialPort->baudRate(QSerialPort::AllDirections);
    serialPort->setBaudRate(wakeUpBaudRate, QSerialPort::AllDirections);
    const char wakeUp = 0;
    serialPort->write(&wakeUp, 1);
    serialPort->flush();
    qDebug().nospace().noquote() << "send 0x00 time:"
                                 << QTime::currentTime().toString(QStringLiteral("hh:mm:ss.zzz"));
    WaitUntilSent(*serialPort);
    serialPort->setBaudRate(rate, QSerialPort::AllDirections);
}

void GnssWindow::SlotOnConnect(bool status)
{
    Global::pluginConnected = status;
}

void GnssWindow::OnSleepWakeup()
{
    WakeUpReceiver();
}

void GnssWindow::OnUartSend(const void* record, int length)
{
    if (record != nullptr && length > 0 && serialPort->isOpen()) {
        serialPort->write(static_cast<const char*>(record), length);
    }
}
