// SPDX-License-Identifier: MIT
#pragma once

#include "host/support/HostSupportGlobal.h"

#include <string>

/// Holds a wide-character string for file-system calls.
class HOST_SUPPORT_EXPORT QCString {
public:
    QCString(const wchar_t* text);
    ~QCString();

private:
    std::wstring m_text;
};
