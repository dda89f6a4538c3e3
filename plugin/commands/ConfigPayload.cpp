// SPDX-License-Identifier: MIT
#include "commands/ConfigPayload.h"

#include <QCoreApplication>

#include <initializer_list>

namespace {

constexpr ConfigPage pages[] = {
    {3, QT_TRANSLATE_NOOP("ConfigPage", "配置GNSS系统"),
     QT_TRANSLATE_NOOP("ConfigPage", "配置GNSS星座等待 ACK超时"), "memcpy fixmode failed"},
    {4, QT_TRANSLATE_NOOP("ConfigPage", "配置冷热启动模式"),
     QT_TRANSLATE_NOOP("ConfigPage", "配置启动方式等待 ACK超时"), "memcpy mode failed"},
    {5, QT_TRANSLATE_NOOP("ConfigPage", "配置NMEA语句模式"),
     QT_TRANSLATE_NOOP("ConfigPage", "配置NMEA语句类型等待 ACK超时"), "memcpy nmeaMode failed"},
    {6, QT_TRANSLATE_NOOP("ConfigPage", "配置捕获低功耗"),
     QT_TRANSLATE_NOOP("ConfigPage", "配置捕获低功耗等待 ACK超时"), "memcpy acqLpw failed"},
    {7, QT_TRANSLATE_NOOP("ConfigPage", "配置跟踪低功耗"),
     QT_TRANSLATE_NOOP("ConfigPage", "配置跟踪低功耗等待 ACK超时"), "memcpy trkLpw failed"},
    {8, QT_TRANSLATE_NOOP("ConfigPage", "配置跟踪抗干扰特性"),
     QT_TRANSLATE_NOOP("ConfigPage", "配置跟踪抗干扰等待 ACK超时"), "memcpy ant failed"},
    {9, QT_TRANSLATE_NOOP("ConfigPage", "配置定位频率"),
     QT_TRANSLATE_NOOP("ConfigPage", "配置定位频率等待 ACK超时"), "memcpy rate failed"},
    {10, QT_TRANSLATE_NOOP("ConfigPage", "配置PPS特性"), QT_TRANSLATE_NOOP("ConfigPage", "配置PPS等待 ACK超时"),
     "memcpy pps failed"},
    {11, QT_TRANSLATE_NOOP("ConfigPage", "配置消息的上报类型"),
     QT_TRANSLATE_NOOP("ConfigPage", "配置芯片上报消息等待 ACK超时"), "memcpy rptMsg failed"},
    {12, QT_TRANSLATE_NOOP("ConfigPage", "配置定位优先级模式"),
     QT_TRANSLATE_NOOP("ConfigPage", "配置冷启动定位优先级等待 ACK超时"), "memcpy prioRate failed"},
};
static_assert(sizeof(pages) / sizeof(pages[0]) == kConfigPages);

QByteArray Bytes(std::initializer_list<int> values)
{
    QByteArray bytes;
    for (const int value : values) {
        bytes.append(static_cast<char>(value));
    }
    return bytes;
}

/// Low power on is the 16-bit value 513 and not a pair of flags.
QByteArray LowPower(bool disable)
{
    return disable ? Bytes({0, 0}) : Bytes({513 & 0xFF, 513 >> 8});
}

} // namespace

const ConfigPage& ConfigPageAt(int index)
{
    return pages[index];
}

QString ConfigPageText(const char* text)
{
    return QCoreApplication::translate("ConfigPage", text);
}

QByteArray ConfigPayload(int index, const ConfigForm& form)
{
    switch (index) {
    case 0:
        return Bytes({form.gps, form.bds, form.glo, form.gal, form.qzss});
    case 1:
        return Bytes({form.coldStart});
    case 2:
        // The receiver's order, not the form's.
        return Bytes({form.gga, form.gll, form.gsa, form.gsv, form.rmc, form.vtg, form.zda, form.pn});
    case 3:
        return LowPower(form.acqDisable);
    case 4:
        return LowPower(form.trkDisable);
    case 5:
        return form.antDisable ? Bytes({0, 0, 0}) : Bytes({1, form.periodWork, form.weakScan});
    case 6:
        return Bytes({form.rate1Hz ? 0 : (form.rate5Hz ? 1 : 2)});
    case 7:
        return form.ppsDisable ? Bytes({0, 0}) : Bytes({1, form.ppsWidth & 0xFF});
    case 8:
        return Bytes({form.meas, form.nav});
    case 9:
        return Bytes({form.prioAuto ? 0 : (form.prioTtff ? 1 : 2)});
    default:
        return {};
    }
}
