// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/AgnssTags.h"
#include "service/Credentials.h"

#include <cstdint>
#include <string>

// The rules by which a request is judged, without network and clock.

namespace service {

constexpr char kSeedPath[] = "/lumat/v1/xgnss/pgnss";
constexpr char kRecordsPath[] = "/lumat/v1/xgnss/agnss";

constexpr std::uint32_t kAllConstellations = protocol::kAllAgnss;
constexpr std::uint32_t kAllDataTypes = protocol::kAllAgnssData;
constexpr std::uint32_t kUsualPeriod = 7; ///< days

/// A request as it came: nothing is decoded in the path and the query.
struct ClientRequest {
    std::string method;
    std::string path;
    std::string query; ///< behind the question mark
    bool authorized = false;
    std::string authorization; ///< value of the header; only with `authorized`
};

struct Verdict {
    int status = 200;    ///< 200, 400, 401, 403 or 404
    std::string problem; ///< for a person; empty with 200
    bool seed = false;   ///< which of the two paths
    std::uint32_t period = kUsualPeriod;
    std::uint32_t constellation = kAllConstellations;
    std::uint32_t dataType = kAllDataTypes;
};

/// The Base64 signature of a text.
std::string Sign(const std::string& text, const std::string& key);

/// Judges path, authorization and parameters, in this order. `nowMillis`: milliseconds since 1970, UTC.
Verdict CheckRequest(const ClientRequest& request, const Credentials& credentials, std::int64_t nowMillis);

} // namespace service
