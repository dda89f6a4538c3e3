// SPDX-License-Identifier: MIT
#include "host/app/ProcessFacts.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#ifdef Q_OS_LINUX
#include <ctime>
#include <unistd.h>
#endif

double MillisecondsSinceProcessStart()
{
#ifdef Q_OS_LINUX
    QFile file(QStringLiteral("/proc/self/stat"));
    if (!file.open(QIODevice::ReadOnly)) {
        return 0.0;
    }
    const QByteArray text = file.readAll();
    // The program's name may hold blanks; the start time is the 20th field behind its closing parenthesis.
    const QList<QByteArray> fields = text.mid(text.lastIndexOf(')') + 2).split(' ');
    timespec now{};
    clock_gettime(CLOCK_BOOTTIME, &now);
    const double start = fields.value(19).toDouble() * 1000.0 / static_cast<double>(sysconf(_SC_CLK_TCK));
    return static_cast<double>(now.tv_sec) * 1000.0 + static_cast<double>(now.tv_nsec) / 1e6 - start;
#else
    return 0.0;
#endif
}

qint64 ResidentKilobytes()
{
    QFile file(QStringLiteral("/proc/self/status"));
    if (!file.open(QIODevice::ReadOnly)) {
        return 0;
    }
    for (const QByteArray& line : file.readAll().split('\n')) {
        if (line.startsWith("VmRSS:")) {
            return line.mid(6).trimmed().split(' ').constFirst().toLongLong();
        }
    }
    return 0;
}

bool IsOpenInThisProcess(const QString& path)
{
    const QString wanted = QFileInfo(path).canonicalFilePath();
    if (wanted.isEmpty()) {
        return false;
    }
    const QDir folder(QStringLiteral("/proc/self/fd"));
    for (const QFileInfo& entry : folder.entryInfoList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot)) {
        if (entry.symLinkTarget() == wanted) {
            return true;
        }
    }
    return false;
}
