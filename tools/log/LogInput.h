// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace tools {

/// A file or standard input, read from front to back in blocks.
class LogInput {
public:
    LogInput() = default;
    ~LogInput();
    LogInput(const LogInput&) = delete;
    LogInput& operator=(const LogInput&) = delete;

    /// Opens `path`, or takes standard input for "-". On failure Error tells why.
    bool Open(const std::string& path);

    /// Up to `size` bytes; 0 at the end and after a failure, which Error tells.
    std::size_t Read(char* bytes, std::size_t size);

    /// Empty as long as all went well. A file that became shorter while it was read is an error too.
    const std::string& Error() const { return m_error; }
    /// How the input is called in messages.
    const std::string& Name() const { return m_name; }
    /// Bytes that the file had when it was opened; 0 where that cannot be known.
    std::uint64_t Size() const { return m_size; }
    std::uint64_t Position() const { return m_position; }
    int Descriptor() const { return m_descriptor; }

private:
    void Fail(const std::string& why) { m_error = m_name + ": " + why; }

    int m_descriptor = -1;
    std::string m_name;
    std::string m_error;
    std::uint64_t m_size = 0;
    std::uint64_t m_position = 0;
};

} // namespace tools
