// SPDX-License-Identifier: MIT
#include "bridge/CommandFrame.h"

CommandFrame::CommandFrame(quint32 commandId, const QByteArray& payload)
    : m_bytes(new uint8_t[ClassGnss::maxFrameLength]),
      m_length(ClassGnss::GnssEncode(commandId, payload.constData(), static_cast<quint32>(payload.size()),
                                     m_bytes.get(), ClassGnss::maxFrameLength))
{
}
