// SPDX-License-Identifier: MIT
#pragma once

#include "assist/Injector.h"

#include <QString>

/// Sends the expanded files of `folder` to the receiver behind the reference time: of each satellite system the
/// ephemeris that fits `time` (Unix seconds), then the data files. A receiver that is gone, a port that is closed
/// or an item that the codec refuses ends the chain.
void InjectExpandedSeed(const Injector& injector, const QString& folder, qint64 time);
