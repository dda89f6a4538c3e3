// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace service {

/// The faults that a run is asked to show, in answers to good requests. A fresh one shows none.
class ServiceFaults {
public:
    /// Takes "NAME" or "NAME=VALUE". On failure `error` says what is wrong.
    bool Add(std::string_view text, std::string& error);

    /// One line for each fault.
    static std::string List();

    std::int64_t slowMillis = 0;
    std::int64_t bytesPerSecond = 0; ///< 0: no limit
    bool empty = false;
    bool halved = false;          ///< the body ends in its middle
    std::int64_t truncated = -1;  ///< the body has this many bytes; below 0: all
    bool cut = false;             ///< the connection closes before the announced length
    std::int64_t cutAfter = -1;   ///< bytes sent before that; below 0: half
    std::int64_t badChecksum = 0; ///< number of the record, from 1; 0: none
    std::int64_t unknownTag = -1;
    bool silent = false;
    std::int64_t status = 0; ///< 0: as it comes
    bool redirect = false;
    std::int64_t hugeMebibytes = 0;
    bool expired = false;
};

} // namespace service
