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
    GnssCbType type;
    GnssCallback callback;
};

// In the order of registration.
constexpr CallbackEntry callbackTable[] = {
    {CB_NMEA, Route<&RecordTarget::OnNmea>},
    {CB_CN0, Route<&RecordTarget::OnCn0>},
    {CB_SAT_POS, Route<&RecordTarget::OnSatPos>},
    {CB_DATA, Route<&RecordTarget::OnData>},
    {CB_COMPASS, Route<&RecordTarget::OnCompass>},
    {CB_MESSAGE, Route<&RecordTarget::OnMessage>},
    {CB_POSITION, Route<&RecordTarget::OnPosition>},
    {CB_PACKAGE, Route<&RecordTarget::OnPackage>},
    {CB_SLEEP_WAKEUP, RouteNotice<&RecordTarget::OnSleepWakeup>},
    {CB_UART_SEND, Route<&RecordTarget::OnUartSend>},
    {CB_KPI_POSITION, Route<&RecordTarget::OnKpiPosition>},
    {CB_KPI_SATELLITE, Route<&RecordTarget::OnKpiSatellite>},
    {CB_ACK, Route<&RecordTarget::OnAck>},
    {CB_FIRST_FIX, RouteNotice<&RecordTarget::OnFirstFix>},
    {CB_HIS_INFO, Route<&RecordTarget::OnHisInfo>},
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
