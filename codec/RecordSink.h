// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/GnssCbType.h"
#include "protocol/Records.h"

#include <cstddef>
#include <cstdint>

namespace codec {

/// Takes what a Codec finds. Every record comes first to the function of its own type, whose default hands
/// the byte image on to OnRecord; so a receiver overrides either the types it wants or OnRecord alone.
/// Records are valid during the call only. All calls come from inside Codec::Decode and Codec::EndOfInput.
class RecordSink {
public:
    virtual ~RecordSink() = default;

    /// Every byte image, with exactly the bytes that cross the boundary. `data` is null and `length` 0 for
    /// the numbers without data (500, 700).
    virtual void OnRecord(protocol::GnssCbType type, const void* data, std::size_t length);

    /// A sentence with a right checksum, from its '$' to its checksum, whole and without its line end. It
    /// comes before the NmeaText record that holds it.
    virtual void OnSentence(const char* text, std::size_t length);

    virtual void OnNmeaText(const protocol::NmeaText& record);
    virtual void OnPackage(const protocol::PackageRecord& record);
    virtual void OnCn0(const protocol::Cn0Record& record);
    virtual void OnPosition(const protocol::PositionRecord& record);
    virtual void OnSatPos(const protocol::SatPosRecord& record);
    virtual void OnCompass(const protocol::CompassRecord& record);
    virtual void OnFix(const protocol::FixRecord& record);
    /// `record` holds the u32 message type and then `payloadLength` bytes.
    virtual void OnMessage(std::uint32_t msgType, const std::uint8_t* record, std::size_t payloadLength);
    virtual void OnAck(const protocol::CbRecvAckType& record);
    virtual void OnWakeUpNeeded();
    virtual void OnKpiFix(const protocol::KpiFixRecord& record);
    virtual void OnKpiCn0(const protocol::KpiCn0Record& record);
    virtual void OnFirstFix();
    virtual void OnHistory(const std::uint8_t* block, std::size_t length);
};

} // namespace codec
