// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// States of the command in flight; the non-negative ones below 4 are the receiver's statuses.
enum AckStateValue {
    AckStateUnknown = -1,
    AckStateAccepted = 0,
    AckStateBadLength = 1,
    AckStateBadParameter = 2,
    AckStateRefused = 3,
    AckStateIdle = 4,
    AckStateSent = 5,
};

/// The words for a command id in one of the four text columns (0, or the constellation of a command that
/// exists once per constellation).
QString CommandText(quint16 id, quint8 column);

/// The words for an ACK state.
QString AckStatusText(int status);
