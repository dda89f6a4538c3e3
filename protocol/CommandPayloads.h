// SPDX-License-Identifier: MIT
#pragma once

// The payloads of the commands that configure a receiver: packed, little-endian; flags are 0 or 1. Free of Qt: the
// configuration window writes them, the virtual receiver reads them.

#include "protocol/Constellations.h"
#include "protocol/FieldList.h"

#include <array>
#include <cstdint>

namespace protocol {

/// Id 1: four numbers, which a receiver takes as they are.
struct StartCommand {
    std::uint32_t first = 0;
    std::uint16_t second = 0;
    std::uint16_t third = 0;
    std::uint32_t fourth = 0;
};
constexpr auto kStartFields =
    Fields(&StartCommand::first, &StartCommand::second, &StartCommand::third, &StartCommand::fourth);
static_assert(LengthOf(kStartFields) == 12 && LastOffset(kStartFields) == 8);

/// Id 2, where it has a payload.
constexpr std::uint16_t kStopPayload = 4;

/// Id 3: a flag for each constellation, in the order of kSettingOrder.
struct ConstellationSetting {
    std::array<std::uint8_t, kSettingOrder.size()> on{};
};
constexpr auto kConstellationSettingFields = Fields(&ConstellationSetting::on);
static_assert(LengthOf(kConstellationSettingFields) == 5);

/// Id 3 with the words of the hot and the cold start: an item of its own.
struct StartItem {
    std::uint16_t tag = 1;
    std::uint16_t length = 1;
    std::uint8_t cold = 0; ///< 1: the receiver forgets everything
};
constexpr auto kStartItemFields = Fields(&StartItem::tag, &StartItem::length, &StartItem::cold);
static_assert(LengthOf(kStartItemFields) == 5 && LastOffset(kStartItemFields) == 4);

/// Id 3 with the word of the NMEA mask: an item of its own.
struct NmeaMaskItem {
    std::uint16_t tag = 3;
    std::uint16_t length = 2;
    std::uint8_t mask = 0; ///< bit n: the sentence of place n in NmeaSetting
    std::uint8_t rest = 0;
};
constexpr auto kNmeaMaskFields =
    Fields(&NmeaMaskItem::tag, &NmeaMaskItem::length, &NmeaMaskItem::mask, &NmeaMaskItem::rest);
static_assert(LengthOf(kNmeaMaskFields) == 6 && LastOffset(kNmeaMaskFields) == 5);

/// Id 4.
enum StartMode : std::uint8_t { StartAutomatic = 0, StartCold = 1 };

/// Id 5: a flag for each sentence.
struct NmeaSetting {
    std::uint8_t gga = 0;
    std::uint8_t gll = 0;
    std::uint8_t gsa = 0;
    std::uint8_t gsv = 0;
    std::uint8_t rmc = 0;
    std::uint8_t vtg = 0;
    std::uint8_t zda = 0;
    std::uint8_t pn = 0;
};
constexpr auto kNmeaSettingFields =
    Fields(&NmeaSetting::gga, &NmeaSetting::gll, &NmeaSetting::gsa, &NmeaSetting::gsv, &NmeaSetting::rmc,
           &NmeaSetting::vtg, &NmeaSetting::zda, &NmeaSetting::pn);
static_assert(LengthOf(kNmeaSettingFields) == 8 && LastOffset(kNmeaSettingFields) == 7);

/// Ids 6 and 7: a 16-bit value and not a pair of flags.
enum class LowPower : std::uint16_t { Off = 0, On = 513 };
struct LowPowerSetting {
    LowPower power = LowPower::Off;
};
constexpr auto kLowPowerFields = Fields(&LowPowerSetting::power);
static_assert(LengthOf(kLowPowerFields) == 2);

/// Id 8.
struct AntiJamSetting {
    std::uint8_t on = 0;
    std::uint8_t periodic = 0;
    std::uint8_t fine = 0;
};
constexpr auto kAntiJamFields = Fields(&AntiJamSetting::on, &AntiJamSetting::periodic, &AntiJamSetting::fine);
static_assert(LengthOf(kAntiJamFields) == 3 && LastOffset(kAntiJamFields) == 2);

/// Id 9.
enum UpdateRate : std::uint8_t { Rate1Hz = 0, Rate5Hz = 1, Rate10Hz = 2 };

/// Id 10.
struct PpsSetting {
    std::uint8_t on = 0;
    std::uint8_t width = 0; ///< milliseconds
};
constexpr auto kPpsFields = Fields(&PpsSetting::on, &PpsSetting::width);
static_assert(LengthOf(kPpsFields) == 2 && LastOffset(kPpsFields) == 1);

/// Id 11.
struct ReportSetting {
    std::uint8_t measurements = 0;
    std::uint8_t solution = 0;
};
constexpr auto kReportFields = Fields(&ReportSetting::measurements, &ReportSetting::solution);
static_assert(LengthOf(kReportFields) == 2 && LastOffset(kReportFields) == 1);

/// Id 12.
enum FixPriority : std::uint8_t { PriorityAutomatic = 0, PriorityTtff = 1, PriorityAccuracy = 2 };

/// Ids 4, 9 and 12, and the probe.
constexpr std::uint16_t kOneByte = 1;

} // namespace protocol
