// SPDX-License-Identifier: MIT
#include "views/log/HexDump.h"

#include <algorithm>

QString HexDump(const QByteArray& bytes, int columns, const QString& prefix)
{
    if (bytes.isEmpty() || columns <= 0) {
        return QString();
    }
    static constexpr char kDigits[] = "0123456789abcdef";
    constexpr char kFirstShown = 33; // the blank is shown as a full stop too
    constexpr char kLastShown = 126;

    const int lines = (bytes.size() + columns - 1) / columns;
    const int width = columns * 3 - 1;
    QString text(lines * (prefix.size() + width + 3 + columns + 1), Qt::Uninitialized);
    QChar* out = text.data();
    for (int start = 0; start < bytes.size(); start += columns) {
        if (start > 0) {
            *out++ = QLatin1Char('\n');
        }
        out = std::copy(prefix.cbegin(), prefix.cend(), out);
        const int count = std::min(columns, bytes.size() - start);
        const char* const line = bytes.constData() + start;
        for (int i = 0; i < count; ++i) {
            const auto value = static_cast<unsigned char>(line[i]);
            if (i > 0) {
                *out++ = QLatin1Char(' ');
            }
            *out++ = QLatin1Char(kDigits[value >> 4]);
            *out++ = QLatin1Char(kDigits[value & 0x0F]);
        }
        out = std::fill_n(out, width - (count * 3 - 1), QLatin1Char(' '));
        for (const char c : {' ', '|', ' '}) {
            *out++ = QLatin1Char(c);
        }
        for (int i = 0; i < count; ++i) {
            *out++ = QLatin1Char(line[i] >= kFirstShown && line[i] <= kLastShown ? line[i] : '.');
        }
    }
    text.resize(static_cast<int>(out - text.constData()));
    return text;
}
