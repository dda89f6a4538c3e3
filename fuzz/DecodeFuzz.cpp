// SPDX-License-Identifier: MIT
// libFuzzer target for the codec's receive side: bytes in, cut where the input says, every record checked
// against what its buffer can hold, and the same bytes in one piece must give the same records.

#include "codec/CallbackSink.h"
#include "codec/Codec.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <vector>

namespace {

void Require(bool condition)
{
    if (!condition) {
        std::abort();
    }
}

/// Checks every record and keeps a running hash of all but the text's grouping.
class CheckingSink : public codec::RecordSink {
public:
    void OnRecord(protocol::GnssCbType type, const void* data, std::size_t length) override
    {
        const auto* bytes = static_cast<const std::uint8_t*>(data);
        switch (type) {
        case protocol::CB_CN0:
            Require(length == 1U + bytes[0] * 8U);
            break;
        case protocol::CB_SAT_POS:
            Require(length == 2U + bytes[0] * 8U);
            break;
        case protocol::CB_KPI_SATELLITE:
            Require(length == 1U + bytes[0] * 4U);
            break;
        case protocol::CB_HIS_INFO:
            Require(length <= protocol::kMaxHistoryBlock);
            break;
        case protocol::CB_MESSAGE: {
            std::uint32_t msgType;
            Require(length > sizeof msgType);
            std::memcpy(&msgType, bytes, sizeof msgType);
            const protocol::MessageLayout* layout = protocol::FindMessageLayout(msgType);
            Require(layout != nullptr && length == sizeof msgType + layout->fullPayload);
            break;
        }
        default:
            break;
        }
        Mix(bytes, length);
        ++records;
    }
    void OnNmeaText(const protocol::NmeaText& record) override
    {
        Require(record.count > 0 && record.count <= protocol::kNmeaSlots);
        for (int i = 0; i < record.count; ++i) {
            Require(record.slot[i][0] == '$' &&
                    strnlen(record.slot[i], protocol::kNmeaSlotSize) < protocol::kNmeaSlotSize);
        }
    }
    void OnSentence(const char* text, std::size_t length) override
    {
        Mix(reinterpret_cast<const std::uint8_t*>(text), length);
    }
    void OnFix(const protocol::FixRecord& fix) override
    {
        Require(fix.latitude >= -90 && fix.latitude <= 90 && fix.longitude >= -180 && fix.longitude <= 180);
        Require(fix.hour < 24 && fix.minute < 60 && fix.second >= 0 && fix.second < 61);
        Require(fix.month <= 12 && fix.day <= 31);
        RecordSink::OnFix(fix);
    }

    std::uint64_t hash = 1469598103934665603U;
    std::uint64_t records = 0;

private:
    void Mix(const std::uint8_t* bytes, std::size_t length)
    {
        for (std::size_t i = 0; i < length; ++i) {
            hash = (hash ^ bytes[i]) * 1099511628211U;
        }
    }
};

/// The bytes decoded in pieces of the given sizes, one behind the other and round again.
std::uint64_t Decode(const std::uint8_t* data, std::size_t size, const std::uint8_t* cuts, std::size_t cutCount)
{
    CheckingSink sink;
    const auto codec = std::make_unique<codec::Codec>(&sink);
    std::size_t at = 0;
    for (std::size_t i = 0; at < size; ++i) {
        std::size_t piece = cutCount == 0 ? size : 1U + cuts[i % cutCount];
        piece = piece < size - at ? piece : size - at;
        // A buffer of exact size, so that a byte read beyond it is seen.
        const std::vector<std::uint8_t> exact(data + at, data + at + piece);
        codec->Decode(exact.data(), exact.size());
        at += piece;
    }
    codec->EndOfInput();
    Require(codec->Counters().bytes == size);
    return sink.hash;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    // The last bytes choose the cuts, so that captures as they are make good beginnings.
    const std::size_t cutCount = size < 8 ? size : 8;
    const std::uint8_t* cuts = data + size - cutCount;
    Require(Decode(data, size, nullptr, 0) == Decode(data, size, cuts, cutCount));
    return 0;
}
