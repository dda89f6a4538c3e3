// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

// The file from which the workbench learns its assistance service: group Service, keys host, appid, key and ca (a
// certificate authority's PEM file, relative to the application directory).

struct AssistConfig {
    QString host;
    QString appid;
    QString key;
    QString ca;
};

/// Where the file lies for a program in `applicationDir`.
QString AssistConfigFile(const QString& applicationDir);

/// True when the file may be written: it is missing, or holds what WriteAssistConfig wrote and nobody has changed.
bool IsOwnAssistConfig(const QString& file);

/// Writes the file, readable by its owner only; false when that fails.
bool WriteAssistConfig(const QString& file, const AssistConfig& config);

/// Application id and key that the local service keeps in its folder; false when they are not there.
bool ReadServiceCredentials(const QString& folder, AssistConfig& config);

/// Trusts the authority that the file names, beside the system's, in all connections made from now on. True when
/// there was one; what is wrong goes to the debug log.
bool TrustConfiguredAuthority(const QString& file, const QString& applicationDir);
