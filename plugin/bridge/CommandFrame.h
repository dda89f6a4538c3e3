// SPDX-License-Identifier: MIT
#pragma once

#include "bridge/ClassGnss.h"

#include <QByteArray>

#include <cstdint>
#include <memory>

/// A command as the codec frames it, in the buffer from which its sender emits it.
class CommandFrame {
public:
    /// Has the codec frame a payload; with ClassGnss::passThroughId the payload is the ready frame.
    CommandFrame(quint32 commandId, const QByteArray& payload);

    /// False when nothing may be sent.
    bool IsEncoded() const { return m_length >= 0; }

    /// Bytes of the frame, 0 for an empty send; the codec's negative result when it isn't encoded.
    int Length() const { return m_length; }

    uint8_t* Data() const { return m_bytes.get(); }

private:
    std::unique_ptr<uint8_t[]> m_bytes;
    int m_length;
};
