// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

// The plug-in must call whatever host it finds itself in: the members are exported, never inlined and never
// bound inside this library, so that a program which defines them itself is the one that gets called.
#define HOST_SUPPORT_EXPORT Q_DECL_EXPORT
