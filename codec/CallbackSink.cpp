// SPDX-License-Identifier: MIT
#include "codec/CallbackSink.h"

namespace codec {

protocol::GnssCallback* CallbackSink::Find(std::uint32_t type)
{
    for (std::size_t i = 0; i < kCount; ++i) {
        if (kTypes[i] == type) {
            return &m_callbacks[i];
        }
    }
    return nullptr;
}

void CallbackSink::Register(std::uint32_t type, protocol::GnssCallback callback)
{
    if (protocol::GnssCallback* slot = Find(type)) {
        *slot = callback;
    }
}

void CallbackSink::Clear()
{
    for (protocol::GnssCallback& callback : m_callbacks) {
        callback = nullptr;
    }
}

void CallbackSink::OnRecord(protocol::GnssCbType type, const void* data, std::size_t length)
{
    const protocol::GnssCallback* slot = Find(type);
    if (slot != nullptr && *slot != nullptr) {
        (*slot)(data, static_cast<int>(length));
    }
}

} // namespace codec
