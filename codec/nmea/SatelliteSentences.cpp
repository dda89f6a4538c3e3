// SPDX-License-Identifier: MIT
#include "codec/nmea/SatelliteSentences.h"

#include "codec/nmea/FieldValues.h"

#include <algorithm>
#include <cstddef>

namespace codec {

namespace {

std::uint16_t ToWord(int value)
{
    return static_cast<std::uint16_t>(std::clamp(value, 0, 65535));
}

} // namespace

GsaSentence ReadGsa(FieldReader fields, TalkerSystem talker)
{
    GsaSentence result;
    result.optMode = fields.Letter();
    result.posMode = ToByte(fields.Integer());
    FieldReader numbers = fields;
    fields.Skip(static_cast<int>(protocol::kGsaPrns));
    result.hasPdop = ReadFloat(fields, result.pdop);
    result.hasHdop = ReadFloat(fields, result.hdop);
    result.hasVdop = ReadFloat(fields, result.vdop);
    bool hasSystem = false;
    const int systemId = fields.Integer(hasSystem);
    result.system = hasSystem && SystemOfId(systemId) ? SystemOfId(systemId) : talker;
    result.systemId = hasSystem ? systemId : 0;
    for (std::size_t i = 0; i < protocol::kGsaPrns; ++i) {
        bool present = false;
        const int number = numbers.Integer(present);
        const SatelliteId id = present ? IdentifySatellite(result.system, number) : SatelliteId{};
        if (id.svid != 0) {
            result.used[result.count++] = {id, number};
        }
    }
    return result;
}

GsvSentence ReadGsv(FieldReader fields, TalkerSystem talker)
{
    GsvSentence result;
    result.total = fields.Integer();
    result.number = fields.Integer();
    fields.Skip();
    const int left = fields.Count();
    const int entries = std::min(left / 4, 5);
    for (int i = 0; i < entries; ++i) {
        GsvSentence::Entry& entry = result.entry[result.count];
        bool hasNumber = false;
        bool hasElevation = false;
        bool hasAzimuth = false;
        entry.number = fields.Integer(hasNumber);
        const int elevation = fields.Integer(hasElevation);
        const int azimuth = fields.Integer(hasAzimuth);
        const int cn0 = fields.Integer();
        if (!hasNumber) {
            continue;
        }
        entry.id = IdentifySatellite(talker, entry.number);
        if (entry.id.svid == 0) {
            continue;
        }
        entry.hasDirection = hasElevation && hasAzimuth;
        entry.elevation = static_cast<std::uint8_t>(std::clamp(elevation, 0, 90));
        entry.azimuth = ToWord(azimuth >= 0 ? azimuth % 360 : 0);
        entry.cn0 = static_cast<std::uint8_t>(std::clamp(cn0, 0, 99));
        ++result.count;
    }
    fields.Skip((left / 4 - entries) * 4);
    if (left % 4 == 1) {
        const char letter = fields.Letter();
        if (letter >= '0' && letter <= '9') {
            result.signalId = static_cast<std::uint8_t>(letter - '0');
        } else if (letter >= 'A' && letter <= 'F') {
            result.signalId = static_cast<std::uint8_t>(letter - 'A' + 10);
        }
    }
    return result;
}

} // namespace codec
