// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

#include <cstddef>
#include <cstring>

/// A view's private copy of a record that the codec lends for the time of a callback.
class RecordCopy {
public:
    /// `length` bytes at `data`, of which at most `largest` are taken: no record of the kind is longer, so a
    /// length that lies reads nothing beyond it. `viewName` stands in the debug line of a failed copy.
    RecordCopy(const void* data, int length, std::size_t largest, const char* viewName);

    /// True for a null pointer or a length of zero or less.
    bool IsDropped() const { return m_bytes.isEmpty(); }

    const char* Data() const { return m_bytes.constData(); }
    std::size_t Size() const { return static_cast<std::size_t>(m_bytes.size()); }

    /// The value at a byte offset, which need not be aligned; a zeroed one when the copy doesn't hold it whole.
    template <typename T> T At(std::size_t offset) const
    {
        T value{};
        if (offset <= Size() && Size() - offset >= sizeof(T)) {
            std::memcpy(&value, Data() + offset, sizeof(T));
        }
        return value;
    }

    /// How many of `count` entries of `entrySize` bytes, the first at `offset`, the copy holds.
    std::size_t HeldEntries(std::size_t count, std::size_t offset, std::size_t entrySize) const;

private:
    QByteArray m_bytes;
};
