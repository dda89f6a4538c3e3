// SPDX-License-Identifier: MIT
#include "host/support/VerCommon.h"

#include "host/support/HostSupportConfig.h"

#include <QCoreApplication>
#include <QDir>

int VerCommon::GetCurrentVersion()
{
    return HostSupportConfig::ConfigurationSet();
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): the host exports it with this parameter
QString VerCommon::GetCfgPath(QString versionNumber)
{
    const QString root =
        QCoreApplication::instance() ? QCoreApplication::applicationDirPath() : QDir::currentPath();
    const QString path = root + QStringLiteral("/Source-Datas/config/") + versionNumber;
    return QDir::toNativeSeparators(QDir::cleanPath(path));
}
