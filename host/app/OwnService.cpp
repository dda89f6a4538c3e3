// SPDX-License-Identifier: MIT
#include "host/app/OwnService.h"

#include "host/app/AssistConfig.h"

#include <QCoreApplication>
#include <QDebug>

OwnService::OwnService()
{
    connect(&m_process, &ServiceProcess::Ready, this, &OwnService::Use);
}

void OwnService::Start(const HostOptions& options)
{
    if (m_tried) {
        return;
    }
    m_tried = true;
    const QString folder = QCoreApplication::applicationDirPath();
    if (options.noService || !IsOwnAssistConfig(AssistConfigFile(folder))) {
        TrustConfiguredAuthority(AssistConfigFile(folder), folder);
        return;
    }
    m_process.Start(
        {options.service, folder + QStringLiteral("/Source-Datas/assist-service"), options.serviceArguments});
}

void OwnService::Use(const QString& host)
{
    const QString folder = QCoreApplication::applicationDirPath();
    const QString file = AssistConfigFile(folder);
    AssistConfig config;
    config.host = host;
    config.ca = m_process.Folder() + QStringLiteral("/certificate.pem");
    if (!ReadServiceCredentials(m_process.Folder(), config) || !IsOwnAssistConfig(file) ||
        !WriteAssistConfig(file, config)) {
        qWarning().noquote() << "assistance service: not written to" << file;
    }
    TrustConfiguredAuthority(file, folder);
}
