// SPDX-License-Identifier: MIT
#pragma once

#include "base/AckState.h"

#include <QString>

/// The words for a command id in one of the four text columns (0, or the place in protocol::kColumnOrder
/// of a command that serves several constellations).
QString CommandText(quint16 id, quint8 column);

/// The words for an ACK state.
QString AckStatusText(int status);
