// SPDX-License-Identifier: MIT
#include "service/PrivateFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <iterator>

namespace service {

bool ReadFile(const std::string& path, std::string& text)
{
    struct stat status = {};
    if (::stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) {
        return false;
    }
    std::ifstream file(path, std::ios::binary);
    text.assign(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    return file.good();
}

bool WritePrivateFile(const std::string& path, const std::string& text)
{
    const std::string fresh = path + "." + std::to_string(::getpid());
    const int descriptor = ::open(fresh.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    if (descriptor < 0) {
        return false;
    }
    std::size_t done = 0;
    while (done < text.size()) {
        const ssize_t written = ::write(descriptor, text.data() + done, text.size() - done);
        if (written <= 0) {
            break;
        }
        done += static_cast<std::size_t>(written);
    }
    const bool closed = ::close(descriptor) == 0;
    if (closed && done == text.size() && std::rename(fresh.c_str(), path.c_str()) == 0) {
        return true;
    }
    ::unlink(fresh.c_str());
    return false;
}

} // namespace service
