#pragma once

#include "codec/RecordSink.h"

#include <cstddef>
#include <cstdint>

namespace gnss {

/// Hands byte images to the callbacks of the boundary. A number without a callback drops its records.
class CallbackSink final : public RecordSink {
public:
    /// `callback` may be null; a number that the boundary does not know is ignored.
    void Register(std::uint32_t type, GnssCallback callback);
    void Clear();
    void OnRecord(GnssCbType type, const void* data, std::size_t length) override;

private:
    static constexpr GnssCbType kTypes[] = {CB_NMEA,          CB_PACKAGE,      CB_CN0,       CB_POSITION,
                                            CB_SAT_POS,       CB_COMPASS,      CB_DATA,      CB_MESSAGE,
                                            CB_ACK,           CB_SLEEP_WAKEUP, CB_UART_SEND, CB_KPI_POSITION,
                                            CB_KPI_SATELLITE, CB_FIRST_FIX,    CB_HIS_INFO};
    static constexpr std::size_t kCount = sizeof kTypes / sizeof kTypes[0];

    GnssCallback* Find(std::uint32_t type);

    GnssCallback m_callbacks[kCount] = {};
};

} // namespace gnss
