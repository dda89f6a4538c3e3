// SPDX-License-Identifier: MIT
#include "commands/ConfigPayload.h"

#include "protocol/CommandPayloads.h"
#include "protocol/LinkFrame.h"

#include <QCoreApplication>

#include <cstdint>
#include <vector>

namespace {

constexpr ConfigPage pages[] = {
    {protocol::CmdConstellations, QT_TRANSLATE_NOOP("ConfigPage", "配置GNSS系统"),
     QT_TRANSLATE_NOOP("ConfigPage", "配置GNSS星座等待 ACK超时"), "memcpy fixmode failed"},
    {protocol::CmdStartMode, QT_TRANSLATE_NOOP("ConfigPage", "配置冷热启动模式"),
     QT_TRANSLATE_NOOP("ConfigPage", "配置启动方式等待 ACK超时"), "memcpy mode failed"},
    {protocol::CmdNmea, QT_TRANSLATE_NOOP("ConfigPage", "配置NMEA语句模式"),
     QT_TRANSLATE_NOOP("ConfigPage", "配置NMEA语句类型等待 ACK超时"), "memcpy nmeaMode failed"},
    {protocol::CmdAcqLowPower, QT_TRANSLATE_NOOP("ConfigPage", "配置捕获低功耗"),
     QT_TRANSLATE_NOOP("ConfigPage", "配置捕获低功耗等待 ACK超时"), "memcpy acqLpw failed"},
    {protocol::CmdTrkLowPower, QT_TRANSLATE_NOOP("ConfigPage", "配置跟踪低功耗"),
     QT_TRANSLATE_NOOP("ConfigPage", "配置跟踪低功耗等待 ACK超时"), "memcpy trkLpw failed"},
    {protocol::CmdAntiJam, QT_TRANSLATE_NOOP("ConfigPage", "配置跟踪抗干扰特性"),
     QT_TRANSLATE_NOOP("ConfigPage", "配置跟踪抗干扰等待 ACK超时"), "memcpy ant failed"},
    {protocol::CmdUpdateRate, QT_TRANSLATE_NOOP("ConfigPage", "配置定位频率"),
     QT_TRANSLATE_NOOP("ConfigPage", "配置定位频率等待 ACK超时"), "memcpy rate failed"},
    {protocol::CmdPps, QT_TRANSLATE_NOOP("ConfigPage", "配置PPS特性"),
     QT_TRANSLATE_NOOP("ConfigPage", "配置PPS等待 ACK超时"), "memcpy pps failed"},
    {protocol::CmdReports, QT_TRANSLATE_NOOP("ConfigPage", "配置消息的上报类型"),
     QT_TRANSLATE_NOOP("ConfigPage", "配置芯片上报消息等待 ACK超时"), "memcpy rptMsg failed"},
    {protocol::CmdFixPriority, QT_TRANSLATE_NOOP("ConfigPage", "配置定位优先级模式"),
     QT_TRANSLATE_NOOP("ConfigPage", "配置冷启动定位优先级等待 ACK超时"), "memcpy prioRate failed"},
};
static_assert(sizeof(pages) / sizeof(pages[0]) == kConfigPages);

QByteArray OneByte(std::uint8_t value)
{
    return QByteArray(1, static_cast<char>(value));
}

template <typename Setting, typename List> QByteArray Bytes(const Setting& setting, const List& fields)
{
    const std::vector<std::uint8_t> bytes = protocol::Packed(setting, fields);
    return QByteArray(reinterpret_cast<const char*>(bytes.data()), static_cast<int>(bytes.size()));
}

std::uint8_t Flag(bool on)
{
    return on ? 1 : 0;
}

QByteArray Constellations(const ConfigForm& form)
{
    using protocol::Constellation;
    protocol::ConstellationSetting setting;
    const auto set = [&setting](Constellation constellation, bool on) {
        setting.on[protocol::PlaceIn(protocol::kSettingOrder, constellation)] = Flag(on);
    };
    set(Constellation::Gps, form.gps);
    set(Constellation::Beidou, form.bds);
    set(Constellation::Glonass, form.glo);
    set(Constellation::Galileo, form.gal);
    set(Constellation::Qzss, form.qzss);
    return Bytes(setting, protocol::kConstellationSettingFields);
}

QByteArray Sentences(const ConfigForm& form)
{
    protocol::NmeaSetting setting;
    setting.gga = Flag(form.gga);
    setting.gll = Flag(form.gll);
    setting.gsa = Flag(form.gsa);
    setting.gsv = Flag(form.gsv);
    setting.rmc = Flag(form.rmc);
    setting.vtg = Flag(form.vtg);
    setting.zda = Flag(form.zda);
    setting.pn = Flag(form.pn);
    return Bytes(setting, protocol::kNmeaSettingFields);
}

QByteArray LowPower(bool disable)
{
    const protocol::LowPowerSetting setting{disable ? protocol::LowPower::Off : protocol::LowPower::On};
    return Bytes(setting, protocol::kLowPowerFields);
}

QByteArray AntiJam(const ConfigForm& form)
{
    protocol::AntiJamSetting setting;
    if (!form.antDisable) {
        setting = {1, Flag(form.periodWork), Flag(form.weakScan)};
    }
    return Bytes(setting, protocol::kAntiJamFields);
}

QByteArray Pps(const ConfigForm& form)
{
    protocol::PpsSetting setting;
    if (!form.ppsDisable) {
        setting = {1, static_cast<std::uint8_t>(form.ppsWidth & 0xFF)};
    }
    return Bytes(setting, protocol::kPpsFields);
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
    switch (ConfigPageAt(index).commandId) {
    case protocol::CmdConstellations:
        return Constellations(form);
    case protocol::CmdStartMode:
        return OneByte(form.coldStart ? protocol::StartCold : protocol::StartAutomatic);
    case protocol::CmdNmea:
        return Sentences(form);
    case protocol::CmdAcqLowPower:
        return LowPower(form.acqDisable);
    case protocol::CmdTrkLowPower:
        return LowPower(form.trkDisable);
    case protocol::CmdAntiJam:
        return AntiJam(form);
    case protocol::CmdUpdateRate:
        return OneByte(form.rate1Hz ? protocol::Rate1Hz : form.rate5Hz ? protocol::Rate5Hz : protocol::Rate10Hz);
    case protocol::CmdPps:
        return Pps(form);
    case protocol::CmdReports:
        return Bytes(protocol::ReportSetting{Flag(form.meas), Flag(form.nav)}, protocol::kReportFields);
    case protocol::CmdFixPriority:
        return OneByte(form.prioAuto   ? protocol::PriorityAutomatic
                       : form.prioTtff ? protocol::PriorityTtff
                                       : protocol::PriorityAccuracy);
    default:
        return {};
    }
}
