// SPDX-License-Identifier: MIT
#include "host/support/HostSupportConfig.h"

#include <atomic>

namespace HostSupportConfig {

namespace {
std::atomic_int product{0};
std::atomic_int configurationSet{1};
} // namespace

void SetProduct(int number)
{
    product = number;
}

int Product()
{
    return product;
}

void SetConfigurationSet(int number)
{
    configurationSet = number;
}

int ConfigurationSet()
{
    return configurationSet;
}

} // namespace HostSupportConfig
