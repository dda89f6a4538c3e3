// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// What the system knows of this process. Where the system does not tell, the figures are 0 and false.

/// Time since the process was started, in steps of the system's clock tick (10 ms on Linux).
double MillisecondsSinceProcessStart();

/// Memory of the process that is in use and resident.
qint64 ResidentKilobytes();

/// Whether this process holds the file or device at `path` open.
bool IsOpenInThisProcess(const QString& path);
