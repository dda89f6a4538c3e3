// SPDX-License-Identifier: MIT
#include "base/GnssAck.h"

#include "base/BoundsChecked.h"
#include "base/CommandTexts.h"
#include "base/ProcessState.h"

GnssAck::GnssAck(QObject* parent) : QObject(parent) {}

void GnssAck::ProcAck(const void* data, quint32 length)
{
    CbRecvAckType record = {};
    if (data == nullptr || length < sizeof(record)) {
        return;
    }
    if (memcpy_s(&record, sizeof(record), data, sizeof(record)) != 0) {
        return;
    }
    Global::ackState =
        record.status <= AckStateRefused ? static_cast<int>(record.status) : static_cast<int>(AckStateUnknown);
    Global::lastAckState = Global::ackState;
    Global::ackMessage = CommandText(record.commandId, Global::ackTableColumn) + AckStatusText(Global::ackState);
    ++Global::ackCount;
}
