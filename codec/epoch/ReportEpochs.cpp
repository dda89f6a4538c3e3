// SPDX-License-Identifier: MIT
#include "codec/epoch/ReportEpochs.h"

#include "codec/Geodesy.h"
#include "codec/epoch/SatelliteList.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace codec {

namespace {

constexpr std::int64_t kMsPerDay = 86400000;
constexpr double kDegreesPerRadian = 57.295779513082320877;
/// Days from 1970-01-01 to 1980-01-06.
constexpr std::int64_t kGpsEpochDays = 3657;

/// Fills the date and time of a record from milliseconds of GPS time.
void SetTime(protocol::FixRecord& fix, std::uint64_t timestamp)
{
    // Far beyond any year that a receiver can mean.
    constexpr std::uint64_t latest = std::uint64_t{1} << 43;
    if (timestamp < static_cast<std::uint64_t>(kGpsMinusUtcMs) || timestamp > latest) {
        return;
    }
    const std::int64_t utc = static_cast<std::int64_t>(timestamp) - kGpsMinusUtcMs;
    const std::int64_t ofDay = utc % kMsPerDay;
    // Civil date from a day number: years are counted from March, in eras of 400 years.
    const std::int64_t days = utc / kMsPerDay + kGpsEpochDays + 719468;
    const std::int64_t era = days / 146097;
    const std::int64_t dayOfEra = days % 146097;
    const std::int64_t yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const std::int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const std::int64_t shifted = (5 * dayOfYear + 2) / 153;
    const std::int64_t month = shifted < 10 ? shifted + 3 : shifted - 9;
    fix.year = static_cast<std::uint32_t>(era * 400 + yearOfEra + (month <= 2 ? 1 : 0));
    fix.month = static_cast<std::uint32_t>(month);
    fix.day = static_cast<std::uint32_t>(dayOfYear - (153 * shifted + 2) / 5 + 1);
    fix.hour = static_cast<std::uint32_t>(ofDay / 3600000);
    fix.minute = static_cast<std::uint32_t>(ofDay / 60000 % 60);
    fix.second = static_cast<double>(ofDay % 60000) / 1000.0;
}

/// A float that a view can show.
template <typename Number> Number Finite(Number value)
{
    return std::isfinite(value) ? value : Number{0};
}

} // namespace

bool LookAngles(const double place[3], double x, double y, double z, double& elevation, double& azimuth)
{
    double enu[3];
    EarthCentredToEnu(place, x, y, z, enu);
    const double range = std::sqrt(enu[0] * enu[0] + enu[1] * enu[1] + enu[2] * enu[2]);
    if (!(range > 1.0) || !std::isfinite(range) || enu[2] < 0) {
        return false;
    }
    elevation = std::asin(std::min(enu[2] / range, 1.0)) * kDegreesPerRadian;
    azimuth = std::atan2(enu[0], enu[1]) * kDegreesPerRadian;
    if (azimuth < 0) {
        azimuth += 360.0;
    }
    return true;
}

void ReportEpochs::Reset()
{
    m_locSeen = false;
    m_measSeen = false;
    m_hasPlace = false;
}

void ReportEpochs::Take(RecordSink& sink, const protocol::MsgLoc& loc, bool told)
{
    const bool first = !std::exchange(m_locSeen, true);
    protocol::FixRecord fix{};
    if ((loc.validMask & LocHasTime) != 0) {
        SetTime(fix, loc.timestamp);
    }
    if ((loc.validMask & LocHasPosition) != 0 && std::abs(loc.latitude) <= 90 && std::abs(loc.longitude) <= 180) {
        fix.latitude = loc.latitude;
        fix.longitude = loc.longitude;
        fix.altitude = static_cast<double>(Finite(loc.altitude));
        fix.fixMode = protocol::FixAutonomous;
        m_hasPlace = true;
        m_place[0] = fix.latitude;
        m_place[1] = fix.longitude;
        m_place[2] = fix.altitude;
    }
    if ((loc.validMask & LocHasSpeed) != 0) {
        fix.speed = Finite(static_cast<float>(std::hypot(loc.speede, loc.speedn)));
        fix.heading = Finite(loc.heading);
    }
    if (!first && !told) {
        m_fixes.Send(sink, fix, fix.fixMode != protocol::FixInvalid, fix.heading);
    }
}

void ReportEpochs::Take(RecordSink& sink, const protocol::MsgMeas& meas, bool told)
{
    const bool first = !std::exchange(m_measSeen, true);
    if (first || told) {
        return;
    }
    protocol::Cn0Record cn0;
    protocol::SatPosRecord satPos;
    protocol::KpiCn0Record kpi;
    cn0.count = 0;
    satPos.count = 0;
    satPos.reserved = 0;
    kpi.count = 0;
    for (const protocol::MeasEntry& entry : meas.entry) {
        if (entry.svid == 0 || entry.constellation >= protocol::kConstellationCount) {
            continue;
        }
        const char letter = protocol::kConstellationTable[entry.constellation].letter;
        const std::uint8_t inUse = entry.inuseFlag != 0 ? 1 : 0;
        cn0.entry[cn0.count++] = {letter, entry.svid, entry.cn0, inUse,
                                  static_cast<float>(Finite(entry.carrierFreq))};
        if (entry.cn0 != 0 && entry.carrierFreq > 1500 && entry.carrierFreq < 1700) {
            kpi.entry[kpi.count++] = {letter, 0, inUse, entry.cn0};
        }
        protocol::SatPosEntry* const end = satPos.entry + satPos.count;
        protocol::SatPosEntry* known = std::find_if(satPos.entry, end, [&](const protocol::SatPosEntry& other) {
            return other.constellation == letter && other.svid == entry.svid;
        });
        if (known != end) {
            known->cn0 = std::max(known->cn0, entry.cn0);
            continue;
        }
        double elevation = 0;
        double azimuth = 0;
        if (m_hasPlace && LookAngles(m_place, entry.satPosX, entry.satPosY, entry.satPosZ, elevation, azimuth)) {
            *end = {letter,
                    entry.svid,
                    static_cast<std::uint8_t>(std::lround(elevation)),
                    0,
                    static_cast<std::uint16_t>(std::lround(azimuth) % 360),
                    inUse,
                    entry.cn0};
            ++satPos.count;
        }
    }
    SortForKpi(kpi);
    sink.OnCn0(cn0);
    sink.OnSatPos(satPos);
    sink.OnKpiCn0(kpi);
}

} // namespace codec
