// SPDX-License-Identifier: MIT
#include "production/EpochStore.h"

#include "base/BoundsChecked.h"

#include <QDebug>

#include <algorithm>
#include <charconv>
#include <iterator>

namespace {

constexpr std::size_t kMostTokens = 21;
constexpr char kUnknown = 'N';

// The name of the frequency, in the order of kEpochOrder.
constexpr const char* kSignals[kConstellations] = {"L1", "B1i", "G1", "E1C", "L1"};

/// The fields between the commas; an empty one keeps its place.
struct Tokens {
    std::string_view at[kMostTokens];
    std::size_t count = 0;

    std::string_view operator[](std::size_t i) const { return i < count ? at[i] : std::string_view(); }
};

Tokens Split(std::string_view sentence)
{
    sentence = sentence.substr(0, sentence.find('\0'));
    sentence = sentence.substr(0, sentence.find_last_not_of("\r\n") + 1);
    Tokens tokens;
    while (tokens.count < kMostTokens) {
        const std::size_t comma = sentence.find(',');
        tokens.at[tokens.count++] = sentence.substr(0, comma);
        if (comma == std::string_view::npos) {
            break;
        }
        sentence.remove_prefix(comma + 1);
    }
    return tokens;
}

/// The number that a field begins with, 0 without one. Never below 0: nothing that is counted here is.
std::int64_t Number(std::string_view field)
{
    std::int64_t value = 0;
    std::from_chars(field.data(), field.data() + field.size(), value);
    return std::max<std::int64_t>(value, 0);
}

double Decimal(std::string_view field)
{
    // Words such as "inf" are no numbers here.
    const std::size_t digit = !field.empty() && field.front() == '-' ? 1 : 0;
    if (digit >= field.size() || (field[digit] != '.' && (field[digit] < '0' || field[digit] > '9'))) {
        return 0.0;
    }
    double value = 0.0;
    std::from_chars(field.data(), field.data() + field.size(), value, std::chars_format::fixed);
    return value;
}

char Letter(std::string_view field, char otherwise)
{
    return field.empty() ? otherwise : field.front();
}

std::uint16_t SatelliteNumber(std::string_view field, char letter)
{
    if (field.empty()) {
        return 0;
    }
    return static_cast<std::uint16_t>(Number(field) - (letter == 'R' ? kGlonassOffset : 0));
}

bool EndsSentence(std::string_view field)
{
    return field.find('*') != std::string_view::npos;
}

/// The place of a constellation, or -1 for an unknown one.
int IndexOf(char letter)
{
    const std::size_t place = protocol::PlaceIn(kEpochOrder, letter);
    return place == kConstellations ? -1 : static_cast<int>(place);
}

/// The letter of the constellation that a GSA's system id tells.
char SystemLetter(int systemId)
{
    for (const protocol::Constellation constellation : kEpochOrder) {
        if (protocol::RowOf(constellation).nmeaSystemId == systemId) {
            return protocol::RowOf(constellation).letter;
        }
    }
    return kUnknown;
}

bool IsUsed(const GsaBlock& block, std::uint16_t number)
{
    const std::uint16_t* end = block.satellites + block.count;
    return std::find(block.satellites, end, number) != end;
}

} // namespace

SentenceKind KindOf(std::string_view sentence)
{
    sentence = sentence.substr(0, sentence.find('\0'));
    if (sentence.find("GSV") != std::string_view::npos) {
        return SentenceKind::Gsv;
    }
    if (sentence.find("GSA") != std::string_view::npos) {
        return SentenceKind::Gsa;
    }
    return sentence.find("GGA") != std::string_view::npos ? SentenceKind::Gga : SentenceKind::Other;
}

bool HoldsGga(std::string_view sentence)
{
    return sentence.substr(0, sentence.find('\0')).find("GGA") != std::string_view::npos;
}

char TalkerLetter(std::string_view sentence)
{
    constexpr std::size_t place = 2;
    if (sentence.size() <= place) {
        return kUnknown;
    }
    for (const protocol::Constellation constellation : kEpochOrder) {
        if (protocol::RowOf(constellation).talker[1] == sentence[place]) {
            return protocol::RowOf(constellation).letter;
        }
    }
    return kUnknown;
}

void TakeGsv(EpochStore& store, std::string_view sentence)
{
    constexpr std::size_t firstSatellite = 4;
    constexpr std::size_t fieldsEach = 4;
    constexpr std::size_t mostEach = 4;

    const char letter = TalkerLetter(sentence);
    const int place = IndexOf(letter);
    if (place < 0) {
        return;
    }
    const Tokens tokens = Split(sentence);
    GsvEntry entries[mostEach];
    std::size_t count = 0;
    std::uint8_t signalId = 0;
    // A field that holds the '*' in the place of a satellite's number is the signal id.
    for (std::size_t at = firstSatellite; at < tokens.count; at += fieldsEach) {
        if (EndsSentence(tokens[at])) {
            signalId = static_cast<std::uint8_t>(tokens[at].front() - '0');
            break;
        }
        if (count == mostEach) {
            break;
        }
        entries[count++] = {SatelliteNumber(tokens[at], letter),
                            static_cast<std::uint16_t>(Number(tokens[at + 1])),
                            static_cast<std::uint16_t>(Number(tokens[at + 2])),
                            static_cast<std::uint16_t>(Number(tokens[at + 3])), 0};
    }

    const auto totalMessages = static_cast<std::uint8_t>(Number(tokens[1]));
    const auto number = static_cast<std::uint8_t>(Number(tokens[2]));
    const auto totalSatellites = static_cast<std::uint8_t>(Number(tokens[3]));
    GsvBlock& block = store.gsv[place];
    if (block.totalSatellites != totalSatellites || block.totalMessages != totalMessages ||
        number != block.lastNumber + 1) {
        block = GsvBlock();
    }
    block.valid = true;
    block.totalMessages = totalMessages;
    block.lastNumber = number;
    block.totalSatellites = totalSatellites;
    for (std::size_t i = 0; i < count && block.entries < kMostGsvEntries; ++i) {
        entries[i].signalId = signalId;
        block.entry[block.entries++] = entries[i];
    }
}

void TakeGsa(EpochStore& store, std::string_view sentence)
{
    constexpr std::size_t firstSatellite = 3;
    constexpr std::size_t systemId = 18;

    const Tokens tokens = Split(sentence);
    char letter = TalkerLetter(sentence);
    if (tokens.count > systemId) {
        letter = SystemLetter(Letter(tokens[systemId], '0') - '0');
    }
    const int place = IndexOf(letter);
    if (place < 0) {
        return;
    }
    GsaBlock block;
    block.valid = true;
    block.mode = Letter(tokens[1], 0);
    block.fixType = static_cast<std::uint8_t>(Number(tokens[2]));
    for (std::size_t i = 0; i < kMostGsaSatellites; ++i) {
        const std::string_view field = tokens[firstSatellite + i];
        if (!field.empty()) {
            block.satellites[block.count++] = SatelliteNumber(field, letter);
        }
    }
    block.pdop = static_cast<float>(Decimal(tokens[15]));
    block.hdop = static_cast<float>(Decimal(tokens[16]));
    block.vdop = static_cast<float>(Decimal(tokens[17]));
    store.gsa[place] = block;
}

void TakeGga(EpochStore& store, std::string_view sentence)
{
    const Tokens tokens = Split(sentence);
    GgaFields& gga = store.gga;
    gga.utc = Decimal(tokens[1]);
    gga.latitude = Decimal(tokens[2]);
    gga.northSouth = Letter(tokens[3], gga.northSouth);
    gga.longitude = Decimal(tokens[4]);
    gga.eastWest = Letter(tokens[5], gga.eastWest);
    gga.quality = static_cast<std::uint8_t>(Number(tokens[6]));
    gga.satellites = static_cast<std::uint8_t>(Number(tokens[7]));
    gga.hdop = static_cast<float>(Decimal(tokens[8]));
    gga.altitude = static_cast<float>(Decimal(tokens[9]));
}

std::vector<SatEntry> SatellitesOf(const EpochStore& store, bool& anyBlock)
{
    anyBlock = false;
    std::vector<SatEntry> satellites;
    for (std::size_t i = 0; i < kConstellations; ++i) {
        const GsvBlock& block = store.gsv[i];
        if (!block.valid) {
            continue;
        }
        anyBlock = true;
        for (std::size_t j = 0; j < block.entries; ++j) {
            const GsvEntry& entry = block.entry[j];
            SatEntry satellite = {protocol::RowOf(kEpochOrder[i]).letter,
                                  static_cast<std::uint8_t>(entry.number),
                                  static_cast<std::uint8_t>(entry.cn0),
                                  static_cast<std::uint8_t>(IsUsed(store.gsa[i], entry.number)),
                                  {}};
            if (strcpy_s(satellite.signal, sizeof satellite.signal, kSignals[i]) != 0) {
                qDebug().noquote() << "strcpy sat freq failed!";
            }
            satellites.push_back(satellite);
        }
    }
    return satellites;
}
