// SPDX-License-Identifier: MIT
#include "line/SerialLink.h"

#include "base/ProcessState.h"
#include "bridge/ClassGnss.h"
#include "line/PortList.h"
#include "line/RawCapture.h"
#include "line/SerialLine.h"

#include <QDateTime>
#include <QDebug>
#include <QSerialPort>
#include <QTimer>

namespace {

constexpr int pollPeriodMs = 10;
constexpr qint32 wakeUpBaudRate = 115200;

} // namespace

SerialLink::SerialLink(QObject* parent)
    : QObject(parent), m_port(std::make_unique<QSerialPort>()), m_pollTimer(new QTimer(this)),
      m_silenceTimer(new QTimer(this))
{
    WatchOwnPort(m_port.get());
    m_pollTimer->setTimerType(Qt::PreciseTimer);
    connect(m_pollTimer, &QTimer::timeout, this, &SerialLink::Poll);
}

SerialLink::~SerialLink() = default;

bool SerialLink::IsOpen() const
{
    return m_port->isOpen();
}

void SerialLink::ScanPorts()
{
    QStringList ownPaths;
    if (IsOpen()) {
        // By the name that it was opened with: portName() of a path is a shortened one.
        ownPaths.append(CanonicalPortPath(Global::currentPortName));
    }
    const PortScan scan = ::ScanPorts(AvailablePorts(), ownPaths);
    m_portNames = scan.names;
    Global::busyPortNames = scan.busy;
}

void SerialLink::Switch()
{
    if (IsOpen()) {
        m_pollTimer->stop();
        m_port->close();
        Global::serialOpen = false;
        m_silenceTimer->stop();
        emit Closed();
        return;
    }
    m_port->setPortName(Global::currentPortName);
    if (Global::currentPortName.isEmpty()) {
        emit NoPortChosen();
        return;
    }
    m_port->setBaudRate(static_cast<qint32>(Global::currentBaudRate), QSerialPort::AllDirections);
    m_pollTimer->start(pollPeriodMs);
    if (!m_port->open(QIODevice::ReadWrite)) {
        // The poll stays on; it finds a closed port until the next successful open.
        emit OpenFailed();
        return;
    }
    Global::serialOpen = true;
    BeginCapture();
    emit Opened();
}

void SerialLink::ChangePort(const QString& name)
{
    if (name == Global::currentPortName) {
        return;
    }
    Global::currentPortName = name;
    if (IsOpen()) {
        m_port->close();
        m_port->setPortName(name);
        m_port->setBaudRate(static_cast<qint32>(Global::currentBaudRate), QSerialPort::AllDirections);
        m_port->open(QIODevice::ReadWrite);
        BeginCapture();
        emit Switched();
    }
}

void SerialLink::ChangeBaudRate(quint32 rate)
{
    Global::currentBaudRate = rate;
    if (IsOpen()) {
        m_port->setBaudRate(static_cast<qint32>(rate), QSerialPort::AllDirections);
    }
}

void SerialLink::Poll()
{
    if (!IsOpen()) {
        return;
    }
    const QByteArray bytes = TakeUnread();
    SilenceDeadLine(*m_port);
    if (bytes.isEmpty()) {
        return;
    }
    m_silenceTimer->stop();
    AppendRawCapture(m_capturePath, bytes);
    ClassGnss::GnssDecode(reinterpret_cast<const quint8*>(bytes.constData()), static_cast<quint32>(bytes.size()));
    emit BytesReceived(bytes);
}

QByteArray SerialLink::TakeUnread()
{
    return IsOpen() ? m_port->readAll() : QByteArray();
}

bool SerialLink::Send(const char* bytes, qint64 length)
{
    if (!IsOpen()) {
        return false;
    }
    if (length > 0) {
        m_port->write(bytes, length);
    }
    return true;
}

void SerialLink::WakeUp()
{
    qDebug().noquote() << "GnssCbType::CB_SLEEP_WAKEUP";
    if (!IsOpen()) {
        return;
    }
    const qint32 rate = m_port->baudRate(QSerialPort::AllDirections);
    m_port->setBaudRate(wakeUpBaudRate, QSerialPort::AllDirections);
    const char wakeUp = 0;
    m_port->write(&wakeUp, 1);
    m_port->flush();
    qDebug().nospace().noquote() << "send 0x00 time:"
                                 << QTime::currentTime().toString(QStringLiteral("hh:mm:ss.zzz"));
    WaitUntilSent(*m_port);
    m_port->setBaudRate(rate, QSerialPort::AllDirections);
}

void SerialLink::SetSaveDirectory(const QString& folder)
{
    m_saveDirectory = folder;
    if (!folder.isEmpty() && IsOpen()) {
        BeginCapture();
    }
}

void SerialLink::StopTicking()
{
    m_pollTimer->stop();
    m_silenceTimer->stop();
}

void SerialLink::ClosePort()
{
    if (IsOpen()) {
        m_port->close();
    }
    Global::serialOpen = false;
}

void SerialLink::BeginCapture()
{
    m_capturePath = RawCapturePath(m_saveDirectory, Global::currentPortName, QDateTime::currentDateTime());
    CreateRawCapture(m_capturePath);
}
