// SPDX-License-Identifier: MIT
#pragma once

namespace protocol {

/// Callback numbers of the codec boundary. Free of Qt, so that the codec itself can use it.
enum GnssCbType : unsigned {
    CB_NMEA = 0,            ///< NmeaText
    CB_PACKAGE = 3,         ///< PackageRecord
    CB_CN0 = 100,           ///< Cn0Record
    CB_POSITION = 101,      ///< PositionRecord
    CB_SAT_POS = 102,       ///< SatPosRecord
    CB_COMPASS = 103,       ///< CompassRecord
    CB_DATA = 200,          ///< FixRecord
    CB_MESSAGE = 300,       ///< MessageRecord
    CB_ACK = 400,           ///< CbRecvAckType
    CB_SLEEP_WAKEUP = 500,  ///< the receiver must be woken; no data
    CB_UART_SEND = 501,     ///< bytes that the codec wants written to the port
    CB_KPI_POSITION = 600,  ///< KpiFixRecord, only with a valid fix
    CB_KPI_SATELLITE = 601, ///< KpiCn0Record
    CB_FIRST_FIX = 700,     ///< the first valid fix since the start; no data
    CB_HIS_INFO = 701,      ///< the receiver's history block
};

/// Signature of every callback; it is called from inside GnssDecode, on the caller's thread.
using GnssCallback = void (*)(const void* data, int length);

} // namespace protocol
