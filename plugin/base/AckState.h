// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/LinkFrame.h"

/// States of the command in flight; the non-negative ones below AckStateIdle are the receiver's statuses.
enum AckStateValue {
    AckStateUnknown = -1,
    AckStateAccepted = protocol::AckAccepted,
    AckStateBadLength = protocol::AckBadLength,
    AckStateBadParameter = protocol::AckBadParameter,
    AckStateRefused = protocol::AckRefused,
    AckStateIdle = 4,
    AckStateSent = 5,
};
static_assert(AckStateRefused < AckStateIdle);
