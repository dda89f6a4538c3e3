// SPDX-License-Identifier: MIT
#include "host/support/CProductVersion.h"

#include "host/support/HostSupportConfig.h"

int CProductVersion::GetVersion()
{
    return HostSupportConfig::Product();
}
