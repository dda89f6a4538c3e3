// SPDX-License-Identifier: MIT
#include "service/Credentials.h"

#include "service/PrivateFile.h"

#include <openssl/rand.h>

#include <sstream>

namespace service {

namespace {

constexpr char kFile[] = "/client.conf";
constexpr char kOwnAppid[] = "workbench";
constexpr std::size_t kKeyLength = 64;

bool Good(const Credentials& credentials)
{
    return !credentials.appid.empty() && credentials.appid.find_first_of(", \r\n") == std::string::npos &&
           credentials.key.size() == kKeyLength &&
           credentials.key.find_first_not_of("0123456789ABCDEF") == std::string::npos;
}

bool MakeKey(std::string& key)
{
    unsigned char bytes[kKeyLength / 2];
    if (RAND_bytes(bytes, sizeof bytes) != 1) {
        return false;
    }
    key.clear();
    for (const unsigned char byte : bytes) {
        key += "0123456789ABCDEF"[byte >> 4];
        key += "0123456789ABCDEF"[byte & 15];
    }
    return true;
}

} // namespace

std::string LoadCredentials(const std::string& folder, Credentials& credentials)
{
    const std::string path = folder + kFile;
    std::string text;
    if (ReadFile(path, text)) {
        std::istringstream lines(text);
        for (std::string line; std::getline(lines, line);) {
            if (line.compare(0, 6, "appid=") == 0) {
                credentials.appid = line.substr(6);
            } else if (line.compare(0, 4, "key=") == 0) {
                credentials.key = line.substr(4);
            }
        }
        return Good(credentials) ? std::string() : path + " holds no application id and key";
    }
    credentials.appid = kOwnAppid;
    if (!MakeKey(credentials.key)) {
        return "no random numbers for a key";
    }
    if (!WritePrivateFile(path, "appid=" + credentials.appid + "\nkey=" + credentials.key + "\n")) {
        return path + " cannot be written";
    }
    return {};
}

} // namespace service
