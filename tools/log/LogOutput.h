// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace tools {

/// A file or standard output, written through one buffer of fixed size.
class LogOutput {
public:
    LogOutput() = default;
    ~LogOutput();
    LogOutput(const LogOutput&) = delete;
    LogOutput& operator=(const LogOutput&) = delete;

    /// Opens `path`, or takes standard output when it is empty. An existing file is replaced.
    bool Open(const std::string& path);

    /// True when `descriptor` is the same file on disk as this output would be: writing would destroy or feed
    /// back what is read. To be asked before Open.
    static bool IsSameFile(const std::string& path, int descriptor);

    void Write(const char* bytes, std::size_t size);
    void Write(std::string_view text) { Write(text.data(), text.size()); }
    /// Writes what is in the buffer and closes a file. The last chance for an error.
    bool Finish();

    bool Failed() const { return !m_error.empty(); }
    const std::string& Error() const { return m_error; }
    int Descriptor() const { return m_descriptor; }

private:
    static constexpr std::size_t kCapacity = std::size_t{256} * 1024;

    void Flush();
    void WriteNow(const char* bytes, std::size_t size);
    void Fail();

    int m_descriptor = -1;
    std::string m_name;
    std::string m_error;
    std::unique_ptr<char[]> m_buffer;
    std::size_t m_used = 0;
};

} // namespace tools
