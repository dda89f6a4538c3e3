// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

/// A record in memory that was zero before, so that its padding is too. A record that is returned or copied may
/// lose that.
template <typename Record> class Zeroed {
public:
    Record* operator->() { return reinterpret_cast<Record*>(m_bytes.data()); }
    const QByteArray& Bytes() const { return m_bytes; }

private:
    QByteArray m_bytes = QByteArray(int(sizeof(Record)), '\0');
};
