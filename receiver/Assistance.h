// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/AssistPayloads.h"
#include "receiver/Memory.h"

namespace receiver {

/// True for the whole and right payload of an item that this command may carry.
bool AssistanceValid(const protocol::AssistForm& form, const std::uint8_t* payload, std::size_t length);

/// True when an injected time is near enough to be of use.
bool TimeHelps(Millis injected, Millis utc);

/// Takes what a valid item says into the memory: the time when it helps; ephemerides that serve now and put their
/// satellites where they are; a satellite that must not be used loses its ephemeris. The other items only count as
/// taken.
void TakeAssistance(const protocol::AssistForm& form, const std::uint8_t* payload, std::size_t length, Millis utc,
                    Memory& memory);

/// Where an injected orbit puts its satellite, in earth-fixed metres.
Vector3 PredictedPosition(const protocol::AssistOrbit& orbit, Millis utc);

} // namespace receiver
