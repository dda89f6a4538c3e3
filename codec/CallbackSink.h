// SPDX-License-Identifier: MIT
#pragma once

#include "codec/RecordSink.h"

#include <cstddef>
#include <cstdint>

namespace codec {

/// Hands byte images to the callbacks of the boundary. A number without a callback drops its records.
class CallbackSink final : public RecordSink {
public:
    /// `callback` may be null; a number that the boundary does not know is ignored.
    void Register(std::uint32_t type, protocol::GnssCallback callback);
    void Clear();
    void OnRecord(protocol::GnssCbType type, const void* data, std::size_t length) override;

private:
    static constexpr protocol::GnssCbType kTypes[] = {
        protocol::CB_NMEA,          protocol::CB_PACKAGE,      protocol::CB_CN0,       protocol::CB_POSITION,
        protocol::CB_SAT_POS,       protocol::CB_COMPASS,      protocol::CB_DATA,      protocol::CB_MESSAGE,
        protocol::CB_ACK,           protocol::CB_SLEEP_WAKEUP, protocol::CB_UART_SEND, protocol::CB_KPI_POSITION,
        protocol::CB_KPI_SATELLITE, protocol::CB_FIRST_FIX,    protocol::CB_HIS_INFO};
    static constexpr std::size_t kCount = sizeof kTypes / sizeof kTypes[0];

    protocol::GnssCallback* Find(std::uint32_t type);

    protocol::GnssCallback m_callbacks[kCount] = {};
};

} // namespace codec
