// SPDX-License-Identifier: MIT
#pragma once

#include "codec/RecordSink.h"
#include "codec/epoch/FixOutput.h"

namespace codec {

/// Bits of MsgLoc::validMask.
enum LocValidBit : std::uint32_t {
    LocHasTime = 1,
    LocHasPosition = 2,
    LocHasClock = 4,
    LocHasSpeed = 8,
};

/// GPS time minus UTC in milliseconds, since 2017.
constexpr std::int64_t kGpsMinusUtcMs = 18000;

/// Makes the records of an epoch from the receiver's binary reports, for a receiver whose sentences are
/// switched off.
///
/// The sentences have the first right: a report gives records only when another report of its kind has come
/// before it and no sentences told the same in between.
class ReportEpochs {
public:
    explicit ReportEpochs(FixOutput& fixes) : m_fixes(fixes) {}

    void Reset();
    /// `told`: sentences have told a position since the last report of this kind.
    void Take(RecordSink& sink, const protocol::MsgLoc& loc, bool told);
    /// `told`: sentences have told satellites since the last report of this kind.
    void Take(RecordSink& sink, const protocol::MsgMeas& meas, bool told);

private:
    FixOutput& m_fixes;
    bool m_locSeen = false;
    bool m_measSeen = false;
    bool m_hasPlace = false;
    double m_place[3] = {0, 0, 0}; ///< latitude, longitude, height of the last valid solution
};

/// Elevation (0 to 90) and azimuth (0 to 360) in degrees of a satellite at earth-centred metres, from a place
/// of latitude, longitude (degrees) and height (metres). False below the horizon or for numbers that are none.
bool LookAngles(const double place[3], double x, double y, double z, double& elevation, double& azimuth);

} // namespace codec
