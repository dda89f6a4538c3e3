// SPDX-License-Identifier: MIT
#include "host/support/QCString.h"

QCString::QCString(const wchar_t* text) : m_text(text ? text : L"") {}

QCString::~QCString() = default;
