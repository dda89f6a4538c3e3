// SPDX-License-Identifier: MIT
#include "assist/AssistDeployment.h"

#include <QCoreApplication>
#include <QSettings>

namespace {

QByteArray Value(const QString& key)
{
    const QSettings settings(QCoreApplication::applicationDirPath() +
                                 QLatin1String("/Source-Datas/bin/config/assist.ini"),
                             QSettings::IniFormat);
    return settings.value(QLatin1String("Service/") + key).toString().toUtf8();
}

} // namespace

ServerInfo DeployedServer(const char* path)
{
    ServerInfo server;
    server.host = Value(QStringLiteral("host"));
    server.path = path;
    return server;
}

AuthInfo DeployedAuth(const QDateTime& now)
{
    AuthInfo auth;
    auth.appid = Value(QStringLiteral("appid"));
    auth.key = Value(QStringLiteral("key"));
    auth.keyLen = static_cast<quint32>(auth.key.size());
    auth.timestamp = AssistTimestamp(now);
    return auth;
}
