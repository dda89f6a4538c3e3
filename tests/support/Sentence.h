// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

/// A sentence with its checksum and line end, from what stands between '$' and '*'.
inline QByteArray Sentence(const QByteArray& body, const QByteArray& lineEnd = "\r\n")
{
    quint8 sum = 0;
    for (const char c : body) {
        sum = quint8(sum ^ quint8(c));
    }
    return '$' + body + '*' + QByteArray::number(sum, 16).rightJustified(2, '0').toUpper() + lineEnd;
}
