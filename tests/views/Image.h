// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

#include <cstring>

/// A record built byte by byte. The offsets that the tests give are stated anew and not taken from the records'
/// own declarations.
class Image {
public:
    explicit Image(int size) : m_bytes(size, '\0') {}

    template <typename T> Image& Put(int offset, T value)
    {
        Q_ASSERT(offset + static_cast<int>(sizeof(T)) <= m_bytes.size());
        std::memcpy(m_bytes.data() + offset, &value, sizeof(T));
        return *this;
    }

    const QByteArray& Bytes() const { return m_bytes; }

private:
    QByteArray m_bytes;
};

/// Hands the bytes to a view from an odd address, in a buffer that ends with them.
template <typename View> void Send(View& view, const QByteArray& bytes)
{
    QByteArray buffer = '\x55' + bytes;
    buffer.squeeze();
    view.OnRecord(buffer.constData() + 1, bytes.size());
}
