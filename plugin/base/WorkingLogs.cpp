// SPDX-License-Identifier: MIT
#include "base/WorkingLogs.h"

#include "base/GnssSaveData.h"

#include <QDir>
#include <QFile>

void ClearWorkingLogs()
{
    for (const char* folder : {"/GnssData/logs/nmea", "/GnssData/logs/hex", "/GnssData/logs/package"}) {
        const QDir directory(QDir::currentPath() + QLatin1String(folder));
        const QStringList names = directory.entryList(QDir::Files);
        for (const QString& name : names) {
            const QString path = directory.filePath(name);
            // An open file would vanish from the folder while its later entries go nowhere.
            if (!GnssSaveData::IsOpenLog(path)) {
                QFile::remove(path);
            }
        }
    }
}
