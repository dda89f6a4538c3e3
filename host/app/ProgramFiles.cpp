// SPDX-License-Identifier: MIT
#include "host/app/ProgramFiles.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace {

#ifdef Q_OS_WIN
const QString kPluginFile = QStringLiteral("Gnss.dll");
const QString kReceiverFile = QStringLiteral("gnss-receiver.exe");
const QString kServiceFile = QStringLiteral("assist-service.exe");
#else
const QString kPluginFile = QStringLiteral("libGnss.so");
const QString kReceiverFile = QStringLiteral("gnss-receiver");
const QString kServiceFile = QStringLiteral("assist-service");
#endif

} // namespace

QString BesideProgram(const QString& name)
{
    return QCoreApplication::applicationDirPath() + QLatin1Char('/') + name;
}

HostOptions WithProgramFiles(HostOptions options)
{
    if (options.plugin.isEmpty()) {
        options.plugin = BesideProgram(kPluginFile);
    } else {
        options.plugin = QFileInfo(options.plugin).absoluteFilePath();
    }
    if (options.receiver.isEmpty()) {
        options.receiver = BesideProgram(kReceiverFile);
    }
    if (options.service.isEmpty()) {
        options.service = BesideProgram(kServiceFile);
    }
    return options;
}
