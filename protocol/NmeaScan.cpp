// SPDX-License-Identifier: MIT
#include "protocol/NmeaScan.h"

#include <algorithm>
#include <cstring>

namespace protocol {

namespace {

/// What a look at the input behind a '$' has found.
enum class Look { Complete, Restart, TooLong, Unfinished };

/// Looks for the end of the sentence that begins at `start`. `stop` is set to the byte behind it, to the '$'
/// that begins a new one, or to the byte behind the longest sentence.
Look LookAhead(const char* start, const char* end, NmeaEnding ending, const char*& stop)
{
    // The byte that makes a sentence too long still counts as a beginning when it is a '$'.
    const bool whole = static_cast<std::size_t>(end - start) > kNmeaLongest;
    const char* const limit = whole ? start + kNmeaLongest + 1 : end;
    const char* seen = start + 1; // no '$' before this
    const char* p = start + 1;
    while (p < limit) {
        const auto* lineFeed = static_cast<const char*>(std::memchr(p, '\n', static_cast<std::size_t>(limit - p)));
        const char* const reach = lineFeed != nullptr ? lineFeed : limit;
        const auto* dollar =
            static_cast<const char*>(std::memchr(seen, '$', static_cast<std::size_t>(reach - seen)));
        if (dollar != nullptr) {
            stop = dollar;
            return Look::Restart;
        }
        if (lineFeed == nullptr) {
            break;
        }
        const std::size_t length = static_cast<std::size_t>(lineFeed + 1 - start);
        if (length >= kNmeaShortest && length <= kNmeaLongest && ending(start, length)) {
            stop = lineFeed + 1;
            return Look::Complete;
        }
        p = lineFeed + 1;
        seen = p;
    }
    stop = limit;
    return whole ? Look::TooLong : Look::Unfinished;
}

/// Adds bytes to a sentence that began in an earlier block, until it is whole or given up.
bool Continue(NmeaBuff& buff, const char*& p, const char* end, NmeaEnding ending)
{
    while (p < end) {
        const char c = *p;
        if (c == '$') {
            buff.length = 0; // the '$' is seen again, as a beginning
            return false;
        }
        ++p;
        buff.text[buff.length++] = c;
        if (buff.length > kNmeaLongest) {
            buff.length = 0;
            return false;
        }
        if (c == '\n' && buff.length >= kNmeaShortest && ending(buff.text, buff.length)) {
            return true;
        }
    }
    return false;
}

} // namespace

bool EndsInLine(const char* text, std::size_t length)
{
    return text[length - 2] == '\r';
}

bool EndsInChecksum(const char* text, std::size_t length)
{
    return text[length - 2] == '\r' && text[length - 5] == '*';
}

bool NextNmeaSentence(NmeaBuff& buff, const char*& p, const char* end, NmeaEnding ending, NmeaSentence& sentence)
{
    while (p < end) {
        if (buff.length > 0) {
            if (Continue(buff, p, end, ending)) {
                sentence = {buff.text, buff.length};
                buff.length = 0;
                return true;
            }
            continue;
        }
        const auto* start = static_cast<const char*>(std::memchr(p, '$', static_cast<std::size_t>(end - p)));
        if (start == nullptr) {
            p = end;
            break;
        }
        const char* stop = nullptr;
        const Look look = LookAhead(start, end, ending, stop);
        p = stop;
        if (look == Look::Complete) {
            sentence = {start, static_cast<std::size_t>(stop - start)};
            return true;
        }
        if (look == Look::Unfinished) {
            buff.length = static_cast<std::uint32_t>(end - start);
            std::copy(start, end, buff.text);
        }
    }
    return false;
}

} // namespace protocol
