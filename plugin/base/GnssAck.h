// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/Records.h"

#include <QObject>

Q_DECLARE_METATYPE(protocol::CbRecvAckType)

using CbRecvAckType = protocol::CbRecvAckType;

/// Turns the receiver's acknowledgement into the process-wide state and words.
class GnssAck : public QObject {
    Q_OBJECT

public:
    explicit GnssAck(QObject* parent = nullptr);

    /// Takes one record. A record shorter than its four bytes is ignored.
    void ProcAck(const void* data, quint32 length);

Q_SIGNALS:
    /// Part of the class's face; waiting goes by Global::ackState, and nothing emits this.
    void AckChange(CbRecvAckType gnssAck);
};
