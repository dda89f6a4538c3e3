#include "service/ServiceFaults.h"

#include <charconv>

namespace assistance {

namespace {

enum class Needs { Nothing, MaybeValue, Value };

struct FaultKind {
    std::string_view name;
    Needs needs;
    std::int64_t lowest;
    std::int64_t highest;
    std::int64_t usual; ///< the value when none is given
    std::string_view form;
    std::string_view help;
    void (*set)(ServiceFaults&, std::int64_t value);
};

constexpr FaultKind kKinds[] = {
    {"slow", Needs::Value, 0, 600000, 0, "slow=MS", "the answer comes MS milliseconds late",
     [](ServiceFaults& f, std::int64_t v) { f.slowMillis = v; }},
    {"drip", Needs::Value, 1, 10000000, 0, "drip=BYTES_PER_S", "the body comes no faster than that",
     [](ServiceFaults& f, std::int64_t v) { f.bytesPerSecond = v; }},
    {"empty", Needs::Nothing, 0, 0, 0, "empty", "the body is empty",
     [](ServiceFaults& f, std::int64_t) { f.empty = true; }},
    {"truncated", Needs::MaybeValue, 0, 100000000, -1, "truncated[=BYTES]",
     "the body ends after BYTES, or in its middle, with a length that agrees",
     [](ServiceFaults& f, std::int64_t v) {
         f.truncated = v;
         f.halved = v < 0;
     }},
    {"cut", Needs::MaybeValue, 0, 100000000, -1, "cut[=BYTES]",
     "the connection closes after BYTES, or in the middle, of a longer announced body",
     [](ServiceFaults& f, std::int64_t v) {
         f.cut = true;
         f.cutAfter = v;
     }},
    {"bad-checksum", Needs::MaybeValue, 1, 1000, 3, "bad-checksum[=N]",
     "the checksum of record N is wrong (3), or that of the seed",
     [](ServiceFaults& f, std::int64_t v) { f.badChecksum = v; }},
    {"unknown-tag", Needs::MaybeValue, 0, 65535, 200, "unknown-tag[=TAG]",
     "a record with the tag TAG (200) stands in the middle of the others",
     [](ServiceFaults& f, std::int64_t v) { f.unknownTag = v; }},
    {"silent", Needs::Nothing, 0, 0, 0, "silent", "no answer ever comes; the connection stays open",
     [](ServiceFaults& f, std::int64_t) { f.silent = true; }},
    {"status", Needs::Value, 400, 599, 0, "status=CODE", "the answer has that status and a short text",
     [](ServiceFaults& f, std::int64_t v) { f.status = v; }},
    {"redirect", Needs::Nothing, 0, 0, 0, "redirect", "the answer points to another path",
     [](ServiceFaults& f, std::int64_t) { f.redirect = true; }},
    {"huge", Needs::MaybeValue, 1, 1000, 50, "huge[=MIB]", "the body is filled up to MIB mebibytes (50)",
     [](ServiceFaults& f, std::int64_t v) { f.hugeMebibytes = v; }},
    {"expired", Needs::Nothing, 0, 0, 0, "expired", "seeds are a day past their validity",
     [](ServiceFaults& f, std::int64_t) { f.expired = true; }},
};

bool Fail(std::string& error, const FaultKind& kind, std::string_view what)
{
    error = "fault ";
    error += kind.form;
    error += ": ";
    error += what;
    return false;
}

} // namespace

bool ServiceFaults::Add(std::string_view text, std::string& error)
{
    const std::size_t equals = text.find('=');
    const std::string_view name = text.substr(0, equals);
    for (const FaultKind& kind : kKinds) {
        if (kind.name != name) {
            continue;
        }
        std::int64_t value = kind.usual;
        if (equals == std::string_view::npos) {
            if (kind.needs == Needs::Value) {
                return Fail(error, kind, "needs a value");
            }
        } else {
            if (kind.needs == Needs::Nothing) {
                return Fail(error, kind, "takes no value");
            }
            const std::string_view digits = text.substr(equals + 1);
            const char* end = digits.data() + digits.size();
            const auto result = std::from_chars(digits.data(), end, value);
            if (result.ec != std::errc() || result.ptr != end || value < kind.lowest || value > kind.highest) {
                return Fail(error, kind, "no such value");
            }
        }
        kind.set(*this, value);
        return true;
    }
    error = "no fault is named \"" + std::string(name) + "\" (--list-faults shows them)";
    return false;
}

std::string ServiceFaults::List()
{
    std::string list;
    for (const FaultKind& kind : kKinds) {
        std::string line(kind.form);
        line.resize(26, ' ');
        list += line;
        list += kind.help;
        list += '\n';
    }
    return list;
}

} // namespace assistance
