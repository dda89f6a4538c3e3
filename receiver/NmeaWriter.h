// SPDX-License-Identifier: MIT
#pragma once

#include "receiver/Epoch.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace receiver {

/// The sentences in the order of the NMEA setting's payload, which is also their order in an epoch.
enum SentenceBit : std::uint8_t {
    SentenceGga = 1,
    SentenceGll = 2,
    SentenceGsa = 4,
    SentenceGsv = 8,
    SentenceRmc = 16,
    SentenceVtg = 32,
    SentenceZda = 64,
    SentencePn = 128,
};
constexpr std::uint8_t kAllSentences = 0xFF;

/// Appends '*', the checksum and CR LF to a sentence that begins with '$'.
void CloseSentence(std::string& sentence);

/// Appends the epoch's sentences, each with its line end, to `out`.
void WriteSentences(const Epoch& epoch, std::uint8_t mask, std::vector<std::string>& out);

/// The line that tells the firmware's version.
std::string VersionSentence(std::string_view version);

} // namespace receiver
