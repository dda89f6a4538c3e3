// SPDX-License-Identifier: MIT
#pragma once

// Writing and reading of little-endian images, and the check that ends them; free of Qt.

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

namespace protocol {

/// CRC-32, reflected, polynomial 0xEDB88320, start and final value all ones.
inline std::uint32_t Crc32(const std::uint8_t* bytes, std::size_t length)
{
    std::uint32_t crc = 0xFFFFFFFFu;
    for (std::size_t i = 0; i < length; ++i) {
        crc ^= bytes[i];
        for (int bit = 0; bit < 8; ++bit) {
            crc = (crc >> 1) ^ ((crc & 1u) != 0 ? 0xEDB88320u : 0u);
        }
    }
    return ~crc;
}

/// Appends fields to an image.
class ImageWriter {
public:
    void U8(unsigned value) { m_bytes.push_back(static_cast<std::uint8_t>(value)); }
    void I8(int value) { U8(static_cast<unsigned>(value) & 0xFFu); }
    void U16(unsigned value) { Unsigned(value, 2); }
    void U32(std::uint32_t value) { Unsigned(value, 4); }
    void U64(std::uint64_t value) { Unsigned(value, 8); }
    void F32(float value)
    {
        std::uint32_t bits = 0;
        std::memcpy(&bits, &value, sizeof bits);
        U32(bits);
    }
    void F64(double value)
    {
        std::uint64_t bits = 0;
        std::memcpy(&bits, &value, sizeof bits);
        U64(bits);
    }
    void Raw(const void* data, std::size_t length)
    {
        const auto* bytes = static_cast<const std::uint8_t*>(data);
        m_bytes.insert(m_bytes.end(), bytes, bytes + length);
    }

    /// Appends the CRC-32 of everything so far.
    void Check() { U32(Crc32(m_bytes.data(), m_bytes.size())); }

    std::size_t Size() const { return m_bytes.size(); }
    const std::vector<std::uint8_t>& Bytes() const { return m_bytes; }

private:
    void Unsigned(std::uint64_t value, int size)
    {
        for (int i = 0; i < size; ++i) {
            m_bytes.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
        }
    }

    std::vector<std::uint8_t> m_bytes;
};

/// Reads fields off an image. Beyond its end everything is 0 and Good() is false from then on.
class ImageReader {
public:
    ImageReader(const std::uint8_t* bytes, std::size_t length) : m_bytes(bytes), m_left(length) {}

    std::uint8_t U8() { return static_cast<std::uint8_t>(Unsigned(1)); }
    std::int8_t I8() { return static_cast<std::int8_t>(U8()); }
    std::uint16_t U16() { return static_cast<std::uint16_t>(Unsigned(2)); }
    std::uint32_t U32() { return static_cast<std::uint32_t>(Unsigned(4)); }
    std::uint64_t U64() { return Unsigned(8); }
    float F32()
    {
        const std::uint32_t bits = U32();
        float value = 0;
        std::memcpy(&value, &bits, sizeof value);
        return value;
    }
    double F64()
    {
        const std::uint64_t bits = U64();
        double value = 0;
        std::memcpy(&value, &bits, sizeof value);
        return value;
    }
    /// Passes over bytes and returns where they begin; null when there are not as many.
    const std::uint8_t* Raw(std::size_t length)
    {
        if (!Has(length)) {
            return nullptr;
        }
        const std::uint8_t* begin = m_bytes;
        m_bytes += length;
        m_left -= length;
        return begin;
    }

    std::size_t Left() const { return m_left; }
    bool Good() const { return m_good; }
    bool AtEnd() const { return m_good && m_left == 0; }

private:
    bool Has(std::size_t length)
    {
        m_good = m_good && length <= m_left;
        return m_good;
    }

    std::uint64_t Unsigned(std::size_t size)
    {
        const std::uint8_t* bytes = Raw(size);
        std::uint64_t value = 0;
        for (std::size_t i = size; bytes != nullptr && i > 0; --i) {
            value = (value << 8) | bytes[i - 1];
        }
        return value;
    }

    const std::uint8_t* m_bytes;
    std::size_t m_left;
    bool m_good = true;
};

} // namespace protocol
