// SPDX-License-Identifier: MIT
// Writes a raw capture of any size to standard output: NMEA epochs, binary frames, bursts of line noise and
// damaged sentences, the same bytes for the same seed.
//
//   NoisyCapture MEGABYTES [SEED]
//
// Programs that work line by line cannot see a sentence with a line feed inside. So that they can be compared
// byte for byte, noise has none where an open '$' stands shortly before it.

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <random>
#include <string>

namespace {

constexpr std::size_t kReach = 128; ///< bytes behind a '$' that may become its sentence

class Generator {
public:
    explicit Generator(std::uint32_t seed) : m_random(seed) {}

    /// An epoch with what stands between it and the next.
    const std::string& Next()
    {
        m_text.clear();
        ++m_second;
        const std::string time = Time();
        Sentence("GNGGA," + time + ",4723." + Digits(6) + ",N,00832." + Digits(6) + ",E,1," + Digits(2) + ",0." +
                 Digits(2) + ",4" + Digits(2) + "." + Digits(1) + ",M,47.3,M,,");
        Noise();
        Sentence("GNRMC," + time + ",A,4723." + Digits(6) + ",N,00832." + Digits(6) + ",E,0.0" + Digits(2) + ",," +
                 "140326,,,A,V");
        for (const char* talker : {"GP", "GL", "GA", "GB"}) {
            Sentence(std::string(talker) + "GSA,A,3," + Digits(2) + "," + Digits(2) + "," + Digits(2) +
                     ",,,,,,,,,,1.2,0.7,1.0,1");
            for (int i = 1; i <= 3; ++i) {
                Sentence(std::string(talker) + "GSV,3," + std::to_string(i) + ",12," + Satellite() + Satellite() +
                         Satellite() + Satellite() + "1");
            }
            Noise();
        }
        Sentence("GNVTG,,T,,M,0.0" + Digits(2) + ",N,0.1" + Digits(2) + ",K,A");
        Frames();
        return m_text;
    }

private:
    std::uint32_t Random(std::uint32_t below) { return static_cast<std::uint32_t>(m_random()) % below; }
    char Byte() { return static_cast<char>(Random(256)); }

    std::string Digits(int count)
    {
        std::string text;
        for (int i = 0; i < count; ++i) {
            text += static_cast<char>('0' + Random(10));
        }
        return text;
    }
    std::string Satellite() { return Digits(2) + "," + Digits(2) + "," + Digits(3) + "," + Digits(2) + ","; }
    std::string Time() const
    {
        const auto two = [](std::uint32_t value) {
            return std::string(value < 10 ? 1 : 0, '0') + std::to_string(value);
        };
        return two(m_second / 3600 % 24) + two(m_second / 60 % 60) + two(m_second % 60) + ".000";
    }

    void Sentence(const std::string& body)
    {
        constexpr char hex[] = "0123456789ABCDEF";
        std::uint8_t sum = 0;
        for (const char c : body) {
            sum = static_cast<std::uint8_t>(sum ^ static_cast<std::uint8_t>(c));
        }
        std::string sentence = '$' + body + '*' + hex[sum >> 4] + hex[sum & 0xF] + "\r\n";
        if (Random(100) == 0) {
            Damage(sentence);
        }
        Append(sentence);
    }

    /// Loses some bytes in the middle, the beginning or the end.
    void Damage(std::string& sentence)
    {
        const std::size_t from = Random(static_cast<std::uint32_t>(sentence.size()));
        sentence.erase(from, 1 + Random(20));
    }

    void Noise()
    {
        if (Random(4) != 0) {
            return;
        }
        std::string noise;
        for (std::uint32_t left = Random(300); left > 0; --left) {
            noise += Byte();
        }
        Append(noise);
    }

    void Frames()
    {
        for (std::uint32_t left = Random(4); left > 0; --left) {
            const std::uint32_t length = Random(900);
            std::string frame = "\x7E\x04";
            frame += static_cast<char>(length & 0xFF);
            frame += static_cast<char>(length >> 8);
            for (std::uint32_t i = 0; i < length; ++i) {
                frame += Byte();
            }
            frame += '\x7E';
            Append(frame);
        }
    }

    void Append(const std::string& bytes)
    {
        for (const char c : bytes) {
            m_sinceDollar = c == '$' ? 0 : m_sinceDollar + 1;
            if (c != '\n' || m_sinceDollar >= kReach || EndsSentence()) {
                m_text += c;
            } else {
                m_text += ' ';
            }
            if (c == '\n' && m_text.back() == '\n') {
                m_sinceDollar = kReach;
            }
        }
    }

    bool EndsSentence() const
    {
        const std::size_t size = m_text.size();
        return m_sinceDollar + 1 >= 10 && size >= 4 && m_text[size - 1] == '\r' && m_text[size - 4] == '*';
    }

    std::mt19937 m_random;
    std::string m_text;
    std::uint32_t m_second = 0;
    std::size_t m_sinceDollar = kReach; ///< bytes behind the last '$' whose sentence has not ended
};

/// A whole number from 1 up, or 0.
std::uint32_t Number(const std::string& text)
{
    std::uint32_t value = 0;
    const std::from_chars_result result = std::from_chars(text.data(), text.data() + text.size(), value);
    return result.ec == std::errc() && result.ptr == text.data() + text.size() ? value : 0;
}

} // namespace

int main(int argc, char** argv)
{
    const std::uint64_t size = argc > 1 ? std::uint64_t(Number(argv[1])) * 1000000 : 0;
    const std::uint32_t seed = argc > 2 ? Number(argv[2]) : 1;
    if (size == 0 || seed == 0 || argc > 3) {
        std::fputs("usage: NoisyCapture MEGABYTES [SEED]\n", stderr);
        return 2;
    }
    Generator generator(seed);
    std::uint64_t written = 0;
    while (written < size) {
        const std::string& text = generator.Next();
        if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size()) {
            std::perror("NoisyCapture");
            return 1;
        }
        written += text.size();
    }
    return std::fflush(stdout) == 0 ? 0 : 1;
}
