// SPDX-License-Identifier: MIT
#include "assist/SeedRules.h"

#include "protocol/Constellations.h"

#include <QDir>

#include <algorithm>
#include <cstdlib>

namespace {

constexpr qint64 seedReserve = 3600;
constexpr qint64 furthestAhead = 7200;
constexpr qint64 narrowReach = 900;
constexpr int timeIndex = 4;
constexpr int timeLength = 10;

QString LocalTimeText(quint32 seconds)
{
    return QDateTime::fromSecsSinceEpoch(seconds).toString(QStringLiteral("yyyy/M/d h:m:s"));
}

} // namespace

bool SeedCovers(quint32 validStart, quint32 validEnd, qint64 time)
{
    return validStart <= time && time + seedReserve <= validEnd;
}

QString SeedSizeText(qint64 size)
{
    return size > 1023 ? QString::number(size >> 10) + QLatin1String("KB")
                       : QString::number(size) + QLatin1Char('B');
}

QString SeedSpanText(quint32 validStart, quint32 validEnd)
{
    return LocalTimeText(validStart) + QLatin1String(" - ") + LocalTimeText(validEnd);
}

bool ReadCustomTime(const QString& text, QDateTime& utc)
{
    const QDateTime local = QDateTime::fromString(text, QStringLiteral("yyyy/MM/dd hh:mm:ss"));
    if (!local.isValid()) {
        return false;
    }
    utc = local.toUTC();
    return true;
}

qint64 ChooseEphemeris(const QStringList& names, qint64 time, bool narrowWindow)
{
    qint64 latest = 0;
    for (const QString& name : names) {
        const qint64 moment = name.mid(timeIndex, timeLength).toLongLong();
        const qint64 ahead = moment - time;
        if (narrowWindow ? std::llabs(ahead) <= narrowReach : ahead <= furthestAhead) {
            latest = std::max(latest, moment);
        }
    }
    return latest;
}

bool DeleteExpandedFiles(const QString& folder)
{
    // An empty path would be the current directory.
    QDir directory(folder);
    if (folder.isEmpty() || !directory.exists()) {
        return false;
    }
    QStringList patterns;
    for (const protocol::Constellation constellation : protocol::kEphemerisOrder) {
        patterns.append(QLatin1String(protocol::RowOf(constellation).shortName) + QLatin1String("_*.*"));
    }
    const QStringList names =
        directory.entryList(patterns, QDir::Files | QDir::NoSymLinks | QDir::CaseSensitive, QDir::Unsorted);
    for (const QString& name : names) {
        directory.remove(name);
    }
    return true;
}
