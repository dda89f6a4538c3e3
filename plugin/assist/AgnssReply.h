// SPDX-License-Identifier: MIT
#pragma once

#include "assist/Injector.h"

#include <QByteArray>

// The reply body of the online assistance: records one after the other, each u16 tag, u16 payload length L, L
// bytes of payload and a checksum byte, little-endian, without header or count.

/// One record of the body.
struct AgnssRecord {
    quint16 tag = 0;
    QByteArray payload;
};

/// Walks a body from record to record.
class AgnssWalk {
public:
    enum class Step {
        Record, ///< a record was read
        End,    ///< fewer than 5 bytes are left; they are ignored
        Broken, ///< a record reaches beyond the body or its checksum is wrong
    };

    explicit AgnssWalk(const QByteArray& body) : m_body(body) {}

    Step Next(AgnssRecord& record);

private:
    QByteArray m_body;
    int m_offset = 0;
};

/// Low 8 bits of the sum of the bytes that a record's checksum covers: tag, length and payload. Their number wraps
/// in 16 bits, so nothing is summed for a payload of 0xFFFC bytes. `record` must hold payloadLength + 4 bytes.
quint8 AgnssChecksum(const quint8* record, quint16 payloadLength);

/// Sends a record. One with an unknown tag goes out as an empty frame.
InjectOutcome InjectAgnssRecord(const Injector& injector, const AgnssRecord& record);
