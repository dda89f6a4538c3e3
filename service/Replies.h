// SPDX-License-Identifier: MIT
#pragma once

#include "service/RequestCheck.h"
#include "service/ServiceFaults.h"

#include <string>
#include <vector>

namespace service {

/// A record of the reply to the online request: tag and payload.
struct TaggedRecord {
    std::uint16_t tag;
    std::vector<std::uint8_t> payload;
};

/// The records for the constellations and data types of the masks; each constellation's time comes with them
/// always. Everything is of the virtual receiver's sky.
std::vector<TaggedRecord> MakeRecords(std::uint32_t constellation, std::uint32_t dataType, std::int64_t nowMillis);

/// The body that a good request gets, spoilt as the faults ask.
std::string MakeBody(const Verdict& verdict, const ServiceFaults& faults, std::int64_t nowMillis);

} // namespace service
