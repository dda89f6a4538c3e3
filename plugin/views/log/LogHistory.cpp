// SPDX-License-Identifier: MIT
#include "views/log/LogHistory.h"

#include <algorithm>
#include <functional>

namespace {

constexpr int kPrefixLength = 4;
constexpr int kStampLength = 14;

} // namespace

QDateTime LogStamp(const QString& fileName)
{
    const QString stamp = fileName.mid(kPrefixLength, kStampLength);
    return stamp.size() == kStampLength ? QDateTime::fromString(stamp, "yyyyMMddhhmmss") : QDateTime();
}

QVector<QDateTime> LogStamps(const QStringList& fileNames)
{
    QVector<QDateTime> stamps;
    for (const QString& name : fileNames) {
        const QDateTime stamp = LogStamp(name);
        if (stamp.isValid()) {
            stamps.append(stamp);
        }
    }
    std::sort(stamps.begin(), stamps.end(), std::greater<>());
    return stamps;
}

QString LogFileOf(const QStringList& fileNames, const QDateTime& stamp)
{
    for (const QString& name : fileNames) {
        if (LogStamp(name) == stamp) {
            return name;
        }
    }
    return QString();
}
