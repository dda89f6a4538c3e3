// SPDX-License-Identifier: MIT
#pragma once

#include "host/support/HostSupportGlobal.h"

#include <QString>

/// Tells where the configuration sets lie.
class HOST_SUPPORT_EXPORT VerCommon {
public:
    /// The number of the configuration set in use.
    static int GetCurrentVersion();

    /// The directory of a configuration set; `versionNumber` is its number as decimal text.
    static QString GetCfgPath(QString versionNumber);
};
