// SPDX-License-Identifier: MIT
#pragma once

#include "host/app/HostOptions.h"

#include <QString>

/// The path of what lies beside the running program.
QString BesideProgram(const QString& name);

/// `options` with a path for the plug-in, the receiver and the service: what is not named lies beside the program.
HostOptions WithProgramFiles(HostOptions options);
