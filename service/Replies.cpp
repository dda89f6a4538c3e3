// SPDX-License-Identifier: MIT
#include "service/Replies.h"

#include "protocol/AgnssTags.h"
#include "seeds/Expansion.h"
#include "seeds/ModelSky.h"

#include <algorithm>

namespace service {

namespace {

using protocol::AssistSystem;

constexpr std::uint32_t kHour = 3600;
constexpr std::uint32_t kDay = 86400;
constexpr std::uint16_t kTimeUncertainty = 500; ///< milliseconds, for the way to the receiver

// In the order of the tags.
constexpr protocol::AgnssKind kDataKinds[] = {protocol::AgnssRtc, protocol::AgnssEph, protocol::AgnssUtc,
                                              protocol::AgnssIon, protocol::AgnssRti, protocol::AgnssAux};

std::vector<std::uint8_t> MakePayload(protocol::AgnssKind kind, AssistSystem system, const seeds::Seed& sky,
                                      std::int64_t nowMillis)
{
    const auto now = static_cast<std::uint32_t>(nowMillis / 1000);
    const std::uint32_t fit = seeds::EphemerisFit(system);
    switch (kind) {
    case protocol::AgnssRtc:
        return protocol::MakeAssistTime(system, now,
                                        {now, static_cast<std::uint16_t>(nowMillis % 1000), kTimeUncertainty});
    case protocol::AgnssEph:
        return protocol::MakeAssistEphemeris(system, now,
                                             seeds::OrbitsAt(sky, system, (now + fit / 2) / fit * fit));
    case protocol::AgnssUtc:
        return protocol::MakeAssistUtc(system, now, *sky.utc);
    case protocol::AgnssIon:
        return protocol::MakeAssistIonosphere(system, now, *sky.ionosphere);
    case protocol::AgnssRti:
        return protocol::MakeAssistIntegrity(system, now,
                                             *sky.systems[static_cast<std::size_t>(system)].integrity);
    case protocol::AgnssAux:
        return protocol::MakeAssistChannels(system, now, seeds::ChannelsAt(sky, system, now));
    }
    return {};
}

/// u16 tag, u16 length, payload, low 8 bits of the sum of everything before.
void AppendRecord(std::string& body, const TaggedRecord& record, bool wrongSum)
{
    protocol::ImageWriter image;
    image.U16(record.tag);
    image.U16(static_cast<unsigned>(record.payload.size()));
    image.Raw(record.payload.data(), record.payload.size());
    unsigned sum = wrongSum ? 1 : 0;
    for (const std::uint8_t byte : image.Bytes()) {
        sum += byte;
    }
    image.U8(sum & 0xFFu);
    body.append(reinterpret_cast<const char*>(image.Bytes().data()), image.Size());
}

std::string RecordsBody(const Verdict& verdict, const ServiceFaults& faults, std::int64_t nowMillis)
{
    std::vector<TaggedRecord> records = MakeRecords(verdict.constellation, verdict.dataType, nowMillis);
    if (faults.unknownTag >= 0) {
        records.insert(records.begin() + static_cast<std::ptrdiff_t>(records.size() / 2),
                       {static_cast<std::uint16_t>(faults.unknownTag), {1, 2, 3, 4}});
    }
    std::string body;
    for (std::size_t i = 0; i < records.size(); ++i) {
        // A number beyond the last record spoils the last.
        const std::size_t spoilt =
            std::min<std::size_t>(records.size(), static_cast<std::size_t>(faults.badChecksum));
        AppendRecord(body, records[i], i + 1 == spoilt);
    }
    return body;
}

std::string SeedBody(const Verdict& verdict, const ServiceFaults& faults, std::int64_t nowMillis)
{
    const auto now = static_cast<std::uint32_t>(nowMillis / 1000);
    // From the full hour that lies at least an hour back; the two hours on top leave the whole period usable.
    std::uint32_t start = (now - kHour) / kHour * kHour;
    std::uint32_t end = start + verdict.period * kDay + 2 * kHour;
    if (faults.expired) {
        start -= (verdict.period + 1) * kDay;
        end -= (verdict.period + 1) * kDay;
    }
    const std::vector<std::uint8_t> image = seeds::PackSeed(seeds::MakeModelSeed(now, start, end));
    std::string body(reinterpret_cast<const char*>(image.data()), image.size());
    if (faults.badChecksum > 0) {
        body.back() = static_cast<char>(body.back() ^ 1);
    }
    return body;
}

} // namespace

std::vector<TaggedRecord> MakeRecords(std::uint32_t constellation, std::uint32_t dataType, std::int64_t nowMillis)
{
    const auto now = static_cast<std::uint32_t>(nowMillis / 1000);
    const seeds::Seed sky = seeds::MakeModelSeed(now, now - kDay / 2, now + kDay / 2);
    std::vector<TaggedRecord> records;
    for (const protocol::Constellation each : protocol::kAgnssOrder) {
        if ((constellation & protocol::AgnssBit(each)) == 0) {
            continue;
        }
        const AssistSystem system = protocol::AssistSystemOf(each);
        for (const protocol::AgnssKind kind : kDataKinds) {
            if (kind == protocol::AgnssRtc || (dataType & protocol::DataTypeBit(kind)) != 0) {
                records.push_back({protocol::TagOf(each, kind), MakePayload(kind, system, sky, nowMillis)});
            }
        }
    }
    return records;
}

std::string MakeBody(const Verdict& verdict, const ServiceFaults& faults, std::int64_t nowMillis)
{
    if (faults.empty) {
        return {};
    }
    std::string body =
        verdict.seed ? SeedBody(verdict, faults, nowMillis) : RecordsBody(verdict, faults, nowMillis);
    if (faults.hugeMebibytes > 0) {
        // No record begins with these bytes, so the walk ends at them.
        body.resize(std::max(body.size(), static_cast<std::size_t>(faults.hugeMebibytes) << 20), '\xFF');
    }
    if (faults.truncated >= 0) {
        body.resize(std::min(body.size(), static_cast<std::size_t>(faults.truncated)));
    } else if (faults.halved) {
        body.resize(body.size() / 2);
    }
    return body;
}

} // namespace service
