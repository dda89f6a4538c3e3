// SPDX-License-Identifier: MIT
#include "host/app/HostSettings.h"

#include <QDir>

namespace {
const QString kProduct = QStringLiteral("Host/Product");
const QString kLanguage = QStringLiteral("Host/Language");
const QString kGeometry = QStringLiteral("Window/Geometry");
const QString kState = QStringLiteral("Window/State");
} // namespace

int LanguageOfLocale(const QLocale& locale)
{
    return locale.language() == QLocale::Chinese ? LANGUAGE_CHINESE : LANGUAGE_ENGLISH;
}

bool WriteLanguageFile(const QString& directory, int language)
{
    const QString folder = directory + QStringLiteral("/Source-Datas/bin/config");
    if (!QDir().mkpath(folder)) {
        return false;
    }
    // Written through QSettings as it is read, so that the reader's cache in this process knows of it.
    QSettings ini(folder + QStringLiteral("/language.ini"), QSettings::IniFormat);
    const QString key = QStringLiteral("LanguageSetting/Language");
    if (ini.value(key).toInt() != language) {
        ini.setValue(key, language);
    }
    ini.sync();
    return ini.status() == QSettings::NoError;
}

HostSettings::HostSettings(const QString& iniFile) : m_ini(iniFile, QSettings::IniFormat) {}

int HostSettings::Product() const
{
    return m_ini.value(kProduct, 0).toInt();
}

void HostSettings::SetProduct(int product)
{
    m_ini.setValue(kProduct, product);
}

int HostSettings::Language(const QLocale& locale) const
{
    const int stored = m_ini.value(kLanguage, 0).toInt();
    return stored == LANGUAGE_ENGLISH || stored == LANGUAGE_CHINESE ? stored : LanguageOfLocale(locale);
}

void HostSettings::SetLanguage(int language)
{
    m_ini.setValue(kLanguage, language);
}

QByteArray HostSettings::Geometry() const
{
    return m_ini.value(kGeometry).toByteArray();
}

QByteArray HostSettings::WindowState() const
{
    return m_ini.value(kState).toByteArray();
}

void HostSettings::SetWindow(const QByteArray& geometry, const QByteArray& state)
{
    m_ini.setValue(kGeometry, geometry);
    m_ini.setValue(kState, state);
}
