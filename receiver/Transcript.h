// SPDX-License-Identifier: MIT
#pragma once

#include "receiver/Utc.h"

#include <cstdio>
#include <string>
#include <string_view>

namespace receiver {

/// A file of every byte on the line: one text line for each piece, "seconds direction count hex |text|", where
/// the direction is '>' for host to receiver and '<' for receiver to host.
class Transcript {
public:
    Transcript() = default;
    ~Transcript();
    Transcript(const Transcript&) = delete;
    Transcript& operator=(const Transcript&) = delete;

    bool Open(const std::string& path);
    void Write(Millis now, char direction, std::string_view bytes);

private:
    std::FILE* m_file = nullptr;
};

} // namespace receiver
