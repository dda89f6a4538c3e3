// SPDX-License-Identifier: MIT
#pragma once

#include "host/support/HostSupportGlobal.h"

/// The product (chip) number of the run.
class HOST_SUPPORT_EXPORT CProductVersion {
public:
    /// 27 is the reduced product, 31 speaks AT commands, every other value is the default product.
    static int GetVersion();
};
