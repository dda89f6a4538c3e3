// SPDX-License-Identifier: MIT
#include "codec/GnssUtils.h"

#include "codec/CallbackSink.h"
#include "codec/Codec.h"
#include "codec/Geodesy.h"

namespace {

bool g_initialised = false;
codec::CallbackSink g_sink;

codec::Codec& TheCodec()
{
    static codec::Codec codec;
    return codec;
}

} // namespace

int InitGnssUtils()
{
    g_sink.Clear();
    TheCodec().Reset();
    TheCodec().SetSink(&g_sink);
    g_initialised = true;
    return 0;
}

void RegGnssCallbacks(std::uint32_t type, void* callback)
{
    if (g_initialised) {
        g_sink.Register(type, reinterpret_cast<protocol::GnssCallback>(callback));
    }
}

void RegLogHandle(void* handler)
{
    if (g_initialised) {
        TheCodec().SetLogHandler(reinterpret_cast<codec::LogHandler>(handler));
    }
}

int GetLibVersion()
{
    return codec::Codec::kVersion;
}

void SetChipType(std::uint32_t) {}

void GnssDecode(const std::uint8_t* data, std::uint32_t length)
{
    if (g_initialised) {
        TheCodec().Decode(data, length);
    }
}

int GnssEncode(std::uint32_t id, const void* payload, std::uint32_t payloadLength, void* out,
               std::uint32_t outSize)
{
    return g_initialised ? TheCodec().Encode(id, payload, payloadLength, out, outSize) : -1;
}

void GnssSleepSwitch(std::uint32_t flag)
{
    if (g_initialised) {
        TheCodec().SetSleepSwitch(flag);
    }
}

void Lla2Enu(const double ref[3], const double pos[3], double enu[3])
{
    codec::GeodeticToEnu(ref, pos, enu);
}

void DeinitGnss(std::uint32_t)
{
    g_sink.Clear();
    if (g_initialised) {
        TheCodec().Reset();
    }
    g_initialised = false;
}
