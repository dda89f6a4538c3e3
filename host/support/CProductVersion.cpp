#include "CProductVersion.h"

#include "HostSupportConfig.h"

int CProductVersion::GetVersion()
{
    return HostSupportConfig::Product();
}
