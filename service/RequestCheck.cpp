// SPDX-License-Identifier: MIT
#include "service/RequestCheck.h"

#include <openssl/crypto.h>
#include <openssl/evp.h>
#include <openssl/hmac.h>

#include <algorithm>
#include <charconv>
#include <iterator>

namespace service {

namespace {

// A client's timestamp is off by its zone's distance from UTC+8, which is at most 20 hours.
constexpr std::int64_t kLongestDifference = std::int64_t{24} * 3600000;

constexpr std::uint32_t kPeriods[] = {1, 3, 7, 14, 28};
constexpr std::uint32_t kHighestMask = 31;

struct Authorization {
    std::string appid;
    std::string timestampText;
    std::int64_t timestamp = 0;
    std::string signature;
};

/// Takes "NAME=VALUE" up to `end` off the front of `text`.
bool TakeField(std::string& text, const std::string& name, char end, std::string& value)
{
    if (text.compare(0, name.size() + 1, name + '=') != 0) {
        return false;
    }
    const std::size_t at = end == '\0' ? text.size() : text.find(end);
    if (at == std::string::npos) {
        return false;
    }
    value = text.substr(name.size() + 1, at - name.size() - 1);
    text.erase(0, at + (end == '\0' ? 0 : 1));
    return !value.empty();
}

template <typename Number> bool ParseWhole(const std::string& text, Number& value)
{
    const char* end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, value);
    return result.ec == std::errc() && result.ptr == end && std::to_string(value) == text;
}

bool ParseAuthorization(std::string text, Authorization& authorization)
{
    constexpr char scheme[] = "HMAC-SHA256 ";
    if (text.compare(0, sizeof scheme - 1, scheme) != 0) {
        return false;
    }
    text.erase(0, sizeof scheme - 1);
    return TakeField(text, "appid", ',', authorization.appid) &&
           TakeField(text, "timestamp", ',', authorization.timestampText) &&
           TakeField(text, "signature", '\0', authorization.signature) &&
           ParseWhole(authorization.timestampText, authorization.timestamp);
}

bool SameText(const std::string& a, const std::string& b)
{
    return a.size() == b.size() && CRYPTO_memcmp(a.data(), b.data(), a.size()) == 0;
}

Verdict Refuse(int status, const char* problem)
{
    Verdict verdict;
    verdict.status = status;
    verdict.problem = problem;
    return verdict;
}

/// Reads the parameters of a signed query; false for one that is unknown, twice there or out of range.
bool ReadParameters(std::string query, Verdict& verdict)
{
    bool seen[3] = {false, false, false};
    const struct {
        const char* name;
        bool seed;
        std::uint32_t Verdict::*value;
    } parameters[] = {
        {"period", true, &Verdict::period},
        {"constellation", false, &Verdict::constellation},
        {"datatype", false, &Verdict::dataType},
    };
    while (!query.empty()) {
        const std::size_t end = query.find('&');
        const std::string piece = query.substr(0, end);
        query = end == std::string::npos ? std::string() : query.substr(end + 1);
        if (end != std::string::npos && query.empty()) {
            return false;
        }
        bool known = false;
        for (std::size_t i = 0; i < std::size(parameters); ++i) {
            const std::string start = std::string(parameters[i].name) + '=';
            if (parameters[i].seed != verdict.seed || piece.compare(0, start.size(), start) != 0) {
                continue;
            }
            known = !seen[i] && ParseWhole(piece.substr(start.size()), verdict.*parameters[i].value);
            seen[i] = true;
        }
        if (!known) {
            return false;
        }
    }
    return std::find(std::begin(kPeriods), std::end(kPeriods), verdict.period) != std::end(kPeriods) &&
           verdict.constellation >= 1 && verdict.constellation <= kHighestMask && verdict.dataType >= 1 &&
           verdict.dataType <= kHighestMask;
}

} // namespace

std::string Sign(const std::string& text, const std::string& key)
{
    unsigned char digest[EVP_MAX_MD_SIZE];
    unsigned int length = 0;
    if (HMAC(EVP_sha256(), key.data(), static_cast<int>(key.size()),
             reinterpret_cast<const unsigned char*>(text.data()), text.size(), digest, &length) == nullptr) {
        return {};
    }
    unsigned char encoded[2 * EVP_MAX_MD_SIZE];
    const int size = EVP_EncodeBlock(encoded, digest, static_cast<int>(length));
    return std::string(reinterpret_cast<const char*>(encoded), static_cast<std::size_t>(size));
}

Verdict CheckRequest(const ClientRequest& request, const Credentials& credentials, std::int64_t nowMillis)
{
    Verdict verdict;
    verdict.seed = request.path == kSeedPath;
    if (!verdict.seed && request.path != kRecordsPath) {
        return Refuse(404, "there is nothing at this path");
    }
    if (request.method != "GET") {
        return Refuse(400, "only GET is served here");
    }
    if (!request.authorized) {
        return Refuse(401, "the request has no authorization");
    }
    Authorization authorization;
    if (!ParseAuthorization(request.authorization, authorization)) {
        return Refuse(400, "the authorization cannot be read");
    }
    if (!SameText(authorization.appid, credentials.appid)) {
        return Refuse(401, "the application id is not known");
    }
    if (authorization.timestamp < nowMillis - kLongestDifference ||
        authorization.timestamp > nowMillis + kLongestDifference) {
        return Refuse(403, "the timestamp is more than 24 hours off");
    }
    const std::string raw = request.method + '&' + request.path + '&' + request.query +
                            "&&appid=" + authorization.appid + "&timestamp=" + authorization.timestampText;
    const std::string signature = Sign(raw, credentials.key);
    if (signature.empty() || !SameText(authorization.signature, signature)) {
        return Refuse(403, "the signature is wrong");
    }
    if (!ReadParameters(request.query, verdict)) {
        return Refuse(400, "the parameters are unknown or out of range");
    }
    return verdict;
}

} // namespace service
