// SPDX-License-Identifier: MIT
#include "host/app/AssistConfig.h"

#include <QCryptographicHash>
#include <QDebug>
#include <QDir>
#include <QFile>
#include <QSettings>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QStringList>

namespace {

const QString kHost = QStringLiteral("Service/host");
const QString kAppid = QStringLiteral("Service/appid");
const QString kKey = QStringLiteral("Service/key");
const QString kAuthority = QStringLiteral("Service/ca");
const QString kMade = QStringLiteral("Service/made");

/// Recognises values that were written together.
QString Mark(const AssistConfig& config)
{
    const QString text = QStringList{config.host, config.appid, config.key, config.ca}.join(QLatin1Char('\n'));
    return QString::fromLatin1(QCryptographicHash::hash(text.toUtf8(), QCryptographicHash::Sha256).toHex());
}

} // namespace

QString AssistConfigFile(const QString& applicationDir)
{
    return applicationDir + QStringLiteral("/Source-Datas/bin/config/assist.ini");
}

bool IsOwnAssistConfig(const QString& file)
{
    if (!QFile::exists(file)) {
        return true;
    }
    const QSettings settings(file, QSettings::IniFormat);
    const AssistConfig config{settings.value(kHost).toString(), settings.value(kAppid).toString(),
                              settings.value(kKey).toString(), settings.value(kAuthority).toString()};
    return settings.value(kMade).toString() == Mark(config);
}

bool WriteAssistConfig(const QString& file, const AssistConfig& config)
{
    QDir().mkpath(QFileInfo(file).path());
    {
        QSettings settings(file, QSettings::IniFormat);
        settings.setValue(kHost, config.host);
        settings.setValue(kAppid, config.appid);
        settings.setValue(kKey, config.key);
        settings.setValue(kAuthority, config.ca);
        settings.setValue(kMade, Mark(config));
        settings.sync();
        if (settings.status() != QSettings::NoError) {
            return false;
        }
    }
    return QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner);
}

bool ReadServiceCredentials(const QString& folder, AssistConfig& config)
{
    QFile file(folder + QStringLiteral("/client.conf"));
    if (!file.open(QIODevice::ReadOnly)) {
        return false;
    }
    for (const QByteArray& line : file.readAll().split('\n')) {
        if (line.startsWith("appid=")) {
            config.appid = QString::fromLatin1(line.mid(6).trimmed());
        } else if (line.startsWith("key=")) {
            config.key = QString::fromLatin1(line.mid(4).trimmed());
        }
    }
    return !config.appid.isEmpty() && !config.key.isEmpty();
}

bool TrustConfiguredAuthority(const QString& file, const QString& applicationDir)
{
    const QString named = QSettings(file, QSettings::IniFormat).value(kAuthority).toString();
    if (named.isEmpty()) {
        return false;
    }
    const QString path = QDir(applicationDir).absoluteFilePath(named);
    const QList<QSslCertificate> authorities =
        QSslCertificate::fromPath(path, QSsl::Pem, QSslCertificate::PatternSyntax::FixedString);
    if (authorities.isEmpty()) {
        qWarning().noquote() << "no certificate authority in" << path;
        return false;
    }
    // The list replaces the one that would be loaded when it is needed, so the system's go into it as well.
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.setCaCertificates(QSslConfiguration::systemCaCertificates() + authorities);
    QSslConfiguration::setDefaultConfiguration(configuration);
    return true;
}
