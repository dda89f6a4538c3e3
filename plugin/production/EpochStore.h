// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/Constellations.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

// What the production test reads out of NMEA sentences, epoch by epoch. Nothing is checked but the
// shape: the test judges the receiver's own words, checksums included.

/// In which an epoch's satellites are listed.
constexpr std::array kEpochOrder = {protocol::Constellation::Gps, protocol::Constellation::Beidou,
                                    protocol::Constellation::Glonass, protocol::Constellation::Galileo,
                                    protocol::Constellation::Qzss};
static_assert(protocol::EachOnce(kEpochOrder));
constexpr std::size_t kConstellations = kEpochOrder.size();

/// What a satellite number of GLONASS is too high by.
constexpr int kGlonassOffset = 64;

constexpr std::size_t kMostGsaSatellites = 12;
constexpr std::size_t kMostGsvEntries = 36; ///< what is beyond is dropped

struct GgaFields {
    double utc = 0.0;      ///< as in the sentence: hhmmss.sss
    double latitude = 0.0; ///< ddmm.mmmm
    char northSouth = 'N';
    double longitude = 0.0; ///< dddmm.mmmm
    char eastWest = 'E';
    std::uint8_t quality = 0; ///< 0: no fix
    std::uint8_t satellites = 0;
    float hdop = 0.0F;
    float altitude = 0.0F; ///< metres
};

struct GsaBlock {
    bool valid = false;
    char mode = 0;
    std::uint8_t fixType = 0;
    std::uint8_t count = 0;
    std::uint16_t satellites[kMostGsaSatellites] = {};
    float pdop = 0.0F;
    float hdop = 0.0F;
    float vdop = 0.0F;
};

struct GsvEntry {
    std::uint16_t number = 0;
    std::uint16_t elevation = 0;
    std::uint16_t azimuth = 0;
    std::uint16_t cn0 = 0; ///< dB-Hz
    std::uint8_t signalId = 0;
};

struct GsvBlock {
    bool valid = false;
    std::uint8_t totalMessages = 0;
    std::uint8_t lastNumber = 0;
    std::uint8_t totalSatellites = 0;
    std::uint8_t entries = 0;
    GsvEntry entry[kMostGsvEntries];
};

/// Filled from the sentences that follow a GGA and closed by the next one.
struct EpochStore {
    GgaFields gga;
    GsaBlock gsa[kConstellations]; ///< in the order of kEpochOrder
    GsvBlock gsv[kConstellations];
};

/// A satellite of an epoch.
struct SatEntry {
    char system;
    std::uint8_t number;
    std::uint8_t cn0; ///< dB-Hz
    std::uint8_t used;
    char signal[4]; ///< name of the frequency
};
static_assert(sizeof(SatEntry) == 8);

enum class SentenceKind { Other, Gsv, Gsa, Gga };

/// The first of GSV, GSA and GGA that stands anywhere in the sentence.
SentenceKind KindOf(std::string_view sentence);
bool HoldsGga(std::string_view sentence);

/// The constellation of the sentence's third character: 'G', 'C', 'R', 'E', 'J', or 'N' for unknown.
char TalkerLetter(std::string_view sentence);

// A sentence without its line end, or with it; a NUL ends it. What is not a number is 0.
void TakeGsv(EpochStore& store, std::string_view sentence);
void TakeGsa(EpochStore& store, std::string_view sentence);
void TakeGga(EpochStore& store, std::string_view sentence);

/// The epoch's satellites. `anyBlock` tells whether there was a list of any constellation at all.
std::vector<SatEntry> SatellitesOf(const EpochStore& store, bool& anyBlock);
