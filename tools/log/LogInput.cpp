// SPDX-License-Identifier: MIT
#include "tools/log/LogInput.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tools {

LogInput::~LogInput()
{
    if (m_descriptor > STDERR_FILENO) {
        ::close(m_descriptor);
    }
}

bool LogInput::Open(const std::string& path)
{
    const bool standard = path == "-";
    m_name = standard ? "standard input" : path;
    m_descriptor = standard ? STDIN_FILENO : ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    struct stat state = {};
    if (m_descriptor < 0 || ::fstat(m_descriptor, &state) != 0) {
        Fail(std::strerror(errno));
        return false;
    }
    if (S_ISDIR(state.st_mode)) {
        Fail(std::strerror(EISDIR));
        return false;
    }
    if (S_ISREG(state.st_mode)) {
        const off_t at = ::lseek(m_descriptor, 0, SEEK_CUR);
        m_size = state.st_size > at && at >= 0 ? static_cast<std::uint64_t>(state.st_size - at) : 0;
    }
    return true;
}

std::size_t LogInput::Read(char* bytes, std::size_t size)
{
    ssize_t count = 0;
    do {
        count = ::read(m_descriptor, bytes, size);
    } while (count < 0 && errno == EINTR);
    if (count < 0) {
        Fail(std::strerror(errno));
        return 0;
    }
    if (count == 0 && m_position < m_size) {
        Fail("became shorter while it was read, at " + std::to_string(m_position) + " of " +
             std::to_string(m_size) + " bytes");
    }
    m_position += static_cast<std::uint64_t>(count);
    return static_cast<std::size_t>(count);
}

} // namespace tools
