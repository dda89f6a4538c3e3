// SPDX-License-Identifier: MIT
#include "performance/RefLocFile.h"

#include "base/IniText.h"

#include <QFile>
#include <QSettings>

namespace {

/// The file with its codec set. Every object needs it, also one that only counts: all objects on one file share
/// what was parsed first, and names read without it would be written back broken.
class RefLocSettings : public QSettings {
public:
    RefLocSettings() : QSettings(QStringLiteral("refLoc.ini"), QSettings::IniFormat) { setIniCodec("UTF-8"); }
};

// Places in the sorted key list.
enum KeyPlace { PlaceAltitude, PlaceLatitude, PlaceLongitude, PlaceName, KeyPlaces };

QString OrZero(const QString& text)
{
    return text.isEmpty() ? QStringLiteral("0") : text;
}

} // namespace

int CountRefLocations()
{
    return RefLocSettings().childGroups().size();
}

QVector<RefLocation> ReadRefLocations()
{
    QVector<RefLocation> locations;
    if (!QFile(QStringLiteral("refLoc.ini")).exists()) {
        return locations;
    }
    RefLocSettings settings;
    const QStringList groups = settings.childGroups();
    for (const QString& group : groups) {
        settings.beginGroup(group);
        const QStringList keys = settings.allKeys();
        if (keys.size() == KeyPlaces) {
            const auto text = [&settings, &keys](KeyPlace place) {
                return IniText(settings.value(keys.at(place)));
            };
            locations.append({text(PlaceName), text(PlaceLongitude), text(PlaceLatitude), text(PlaceAltitude)});
        }
        settings.endGroup();
    }
    return locations;
}

RefLocation WithZeros(const RefLocation& location)
{
    return {OrZero(location.name), OrZero(location.longitude), OrZero(location.latitude),
            OrZero(location.altitude)};
}

void SaveRefLocation(int number, const RefLocation& location)
{
    RefLocSettings settings;
    settings.beginGroup(QStringLiteral("RefLoc_%1").arg(number));
    settings.setValue(QStringLiteral("refLocName"), location.name);
    settings.setValue(QStringLiteral("refLocLon"), location.longitude);
    settings.setValue(QStringLiteral("refLocLat"), location.latitude);
    settings.setValue(QStringLiteral("refLocAlt"), location.altitude);
    settings.endGroup();
}
