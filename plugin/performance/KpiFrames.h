// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

/// The frames that a performance test sends; they are complete and pass through the codec as they are.
enum class KpiFrame { Start, Stop, ColdStart, HotStart, AllNmeaReports };

QByteArray KpiFrameBytes(KpiFrame frame);
