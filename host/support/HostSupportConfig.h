// SPDX-License-Identifier: MIT
#pragma once

#include "host/support/HostSupportGlobal.h"

/// What our own host tells the support classes before it loads the plug-in. The plug-in never includes this.
namespace HostSupportConfig {

/// Number that CProductVersion::GetVersion() returns; 0, the default product, until it is set.
HOST_SUPPORT_EXPORT void SetProduct(int product);
HOST_SUPPORT_EXPORT int Product();

/// Number of the configuration set in use; 1 until it is set. Set N lies in Source-Datas/config/N beside the
/// program.
HOST_SUPPORT_EXPORT void SetConfigurationSet(int number);
HOST_SUPPORT_EXPORT int ConfigurationSet();

} // namespace HostSupportConfig
