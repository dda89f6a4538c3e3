// SPDX-License-Identifier: MIT
#include "host/app/HostTranslators.h"

#include "host/app/HostSettings.h"

#include <QCoreApplication>
#include <QDebug>
#include <QLibraryInfo>

void HostTranslators::Install(int language, const QString& folder)
{
    for (QTranslator* translator : {&m_hostTexts, &m_pluginTexts, &m_qtTexts}) {
        QCoreApplication::removeTranslator(translator);
    }
    const auto install = [](QTranslator& translator, const QString& name, const QString& from) {
        if (!translator.load(name, from)) {
            return false;
        }
        QCoreApplication::installTranslator(&translator);
        return true;
    };
    if (language == LANGUAGE_CHINESE) {
        if (!install(m_hostTexts, QStringLiteral("host_zh"), folder)) {
            qWarning().noquote() << "no translation" << folder + QStringLiteral("/host_zh.qm");
        }
        if (!install(m_qtTexts, QStringLiteral("qtbase_zh_CN"), folder)) {
            install(m_qtTexts, QStringLiteral("qtbase_zh_CN"),
                    QLibraryInfo::location(QLibraryInfo::TranslationsPath));
        }
    } else if (!install(m_pluginTexts, QStringLiteral("gnss_en"), folder)) {
        qWarning().noquote() << "no translation" << folder + QStringLiteral("/gnss_en.qm");
    }
}
