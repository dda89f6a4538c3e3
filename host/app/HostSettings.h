// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QLocale>
#include <QSettings>
#include <QString>

/// Numbers of the languages, as language.ini holds them.
enum HostLanguage { LANGUAGE_ENGLISH = 1, LANGUAGE_CHINESE = 2 };

/// The language of a first start: Chinese where the locale is Chinese, else English.
int LanguageOfLocale(const QLocale& locale);

/// Writes `language` to Source-Datas/bin/config/language.ini under `directory`, where the plug-in reads it.
bool WriteLanguageFile(const QString& directory, int language);

/// What the host remembers from one run to the next.
class HostSettings {
public:
    explicit HostSettings(const QString& iniFile);

    int Product() const;
    void SetProduct(int product);

    /// 1 or 2; what the locale says until one was chosen.
    int Language(const QLocale& locale) const;
    void SetLanguage(int language);

    QByteArray Geometry() const;
    QByteArray WindowState() const;
    void SetWindow(const QByteArray& geometry, const QByteArray& state);

private:
    QSettings m_ini;
};
