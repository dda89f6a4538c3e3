// SPDX-License-Identifier: MIT
#include "assist/SeedInjection.h"

#include "assist/PgnssItems.h"
#include "assist/SeedRules.h"

#include <QDir>

namespace {

bool InjectEphemerides(const Injector& injector, const QString& folder, qint64 time)
{
    for (const PgnssEphemeris& ephemeris : kEphemerides) {
        const QString prefix = QLatin1String(ephemeris.file.name) + QLatin1Char('_');
        const QStringList names = QDir(folder).entryList({prefix + QLatin1String("*.eph")},
                                                         QDir::Files | QDir::CaseSensitive, QDir::Unsorted);
        const qint64 moment = ChooseEphemeris(names, time, ephemeris.narrowWindow);
        const QString path = folder + QLatin1Char('/') + prefix + QString::number(moment) + QLatin1String(".eph");
        const InjectOutcome outcome = InjectPgnssFile(injector, path, ephemeris.file);
        if (outcome == InjectOutcome::NotEncoded || injector.Ended()) {
            return false;
        }
    }
    return true;
}

void InjectDataFiles(const Injector& injector, const QString& folder)
{
    for (const PgnssFile& file : kDataFiles) {
        const QStringList names =
            QDir(folder).entryList({QLatin1String(file.name)}, QDir::Files | QDir::CaseSensitive, QDir::Unsorted);
        for (const QString& name : names) {
            const InjectOutcome outcome = InjectPgnssFile(injector, folder + QLatin1Char('/') + name, file);
            if (outcome == InjectOutcome::NotEncoded || injector.Ended()) {
                return;
            }
        }
    }
}

} // namespace

void InjectExpandedSeed(const Injector& injector, const QString& folder, qint64 time)
{
    if (injector.Run(PgnssTimeItem(time)) == InjectOutcome::Sent && !injector.Ended() &&
        InjectEphemerides(injector, folder, time)) {
        InjectDataFiles(injector, folder);
    }
}
