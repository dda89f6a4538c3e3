// SPDX-License-Identifier: MIT
#include "tools/log/LogOutput.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tools {

LogOutput::~LogOutput()
{
    if (m_descriptor > STDERR_FILENO) {
        ::close(m_descriptor);
    }
}

bool LogOutput::Open(const std::string& path)
{
    m_name = path.empty() ? "standard output" : path;
    m_descriptor =
        path.empty() ? STDOUT_FILENO : ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    if (m_descriptor < 0) {
        Fail();
        return false;
    }
    m_buffer.reset(new char[kCapacity]);
    return true;
}

bool LogOutput::IsSameFile(const std::string& path, int descriptor)
{
    struct stat input = {};
    struct stat output = {};
    const int known = path.empty() ? ::fstat(STDOUT_FILENO, &output) : ::stat(path.c_str(), &output);
    return known == 0 && ::fstat(descriptor, &input) == 0 && S_ISREG(input.st_mode) &&
           input.st_dev == output.st_dev && input.st_ino == output.st_ino;
}

void LogOutput::Write(const char* bytes, std::size_t size)
{
    if (size > kCapacity - m_used) {
        Flush();
        if (size > kCapacity) {
            WriteNow(bytes, size);
            return;
        }
    }
    std::memcpy(m_buffer.get() + m_used, bytes, size);
    m_used += size;
}

void LogOutput::Flush()
{
    WriteNow(m_buffer.get(), m_used);
    m_used = 0;
}

void LogOutput::WriteNow(const char* bytes, std::size_t size)
{
    while (size > 0 && !Failed()) {
        const ssize_t count = ::write(m_descriptor, bytes, size);
        if (count >= 0) {
            bytes += count;
            size -= static_cast<std::size_t>(count);
        } else if (errno != EINTR) {
            Fail();
        }
    }
}

bool LogOutput::Finish()
{
    Flush();
    if (m_descriptor > STDERR_FILENO) {
        const int descriptor = m_descriptor;
        m_descriptor = -1;
        // A file on a network tells of a full disk only here.
        if (::close(descriptor) != 0 && !Failed()) {
            Fail();
        }
    }
    return !Failed();
}

void LogOutput::Fail()
{
    m_error = m_name + ": " + std::strerror(errno);
}

} // namespace tools
