// SPDX-License-Identifier: MIT
#include "bridge/CallbackRouting.h"

#include "base/BoundsChecked.h"
#include "bridge/ClassGnss.h"
#include "bridge/RecordTarget.h"
#include "protocol/GnssCbType.h"

#include <QDebug>

#include <cstdarg>

namespace {

RecordTarget* recordTarget = nullptr;

template <void (RecordTarget::*Entry)(const void*, int)> void Route(const void* data, int length)
{
    if (recordTarget != nullptr) {
        (recordTarget->*Entry)(data, length);
    }
}

template <void (RecordTarget::*Entry)()> void RouteNotice(const void*, int)
{
    if (recordTarget != nullptr) {
        (recordTarget->*Entry)();
    }
}

struct CallbackEntry {
    protocol::GnssCbType type;
    protocol::GnssCallback callback;
};

// In the order of registration.
constexpr CallbackEntry callbackTable[] = {
    {protocol::CB_NMEA, Route<&RecordTarget::OnNmea>},
    {protocol::CB_CN0, Route<&RecordTarget::OnCn0>},
    {protocol::CB_SAT_POS, Route<&RecordTarget::OnSatPos>},
    {protocol::CB_DATA, Route<&RecordTarget::OnData>},
    {protocol::CB_COMPASS, Route<&RecordTarget::OnCompass>},
    {protocol::CB_MESSAGE, Route<&RecordTarget::OnMessage>},
    {protocol::CB_POSITION, Route<&RecordTarget::OnPosition>},
    {protocol::CB_PACKAGE, Route<&RecordTarget::OnPackage>},
    {protocol::CB_SLEEP_WAKEUP, RouteNotice<&RecordTarget::OnSleepWakeup>},
    {protocol::CB_UART_SEND, Route<&RecordTarget::OnUartSend>},
    {protocol::CB_KPI_POSITION, Route<&RecordTarget::OnKpiPosition>},
    {protocol::CB_KPI_SATELLITE, Route<&RecordTarget::OnKpiSatellite>},
    {protocol::CB_ACK, Route<&RecordTarget::OnAck>},
    {protocol::CB_FIRST_FIX, RouteNotice<&RecordTarget::OnFirstFix>},
    {protocol::CB_HIS_INFO, Route<&RecordTarget::OnHisInfo>},
};

constexpr std::size_t logBufferSize = 10000;

__attribute__((format(printf, 4, 0))) void CodecLog(const char* file, int line, const char* function,
                                                    const char* format, std::va_list arguments)
{
    char text[logBufferSize] = {};
    if (vsnprintf_s(text, sizeof(text), sizeof(text) - 1, format, arguments) < 0) {
        qWarning("Failed to format log message.");
        return;
    }
    qDebug().nospace().noquote() << "[" << (file != nullptr ? file : "") << ":" << line << "] "
                                 << (function != nullptr ? function : "") << ": " << QString::fromLocal8Bit(text);
}

} // namespace

void PublishRecordTarget(RecordTarget* target)
{
    recordTarget = target;
}

RecordTarget* PublishedRecordTarget()
{
    return recordTarget;
}

void RegisterCallbacks()
{
    for (const CallbackEntry& entry : callbackTable) {
        ClassGnss::RegGnssCallbacks(entry.type, entry.callback);
    }
    ClassGnss::RegLogHandle(reinterpret_cast<void*>(&CodecLog));
}

QString FirstFixText(const QDateTime& start, const QDateTime& now)
{
    const float milliseconds = static_cast<float>(start.msecsTo(now));
    const double seconds = static_cast<double>(milliseconds) / 1000.0 - 0.12;
    return QString::number(seconds, 'f', 2) + QLatin1Char('s');
}
