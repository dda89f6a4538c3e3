// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/LinkFrame.h"
#include "protocol/MessageRecords.h"
#include "receiver/Epoch.h"

#include <string>

namespace receiver {

/// A whole frame from the receiver.
std::string MakeFrame(std::uint16_t id, std::uint16_t word1, std::uint16_t word2, const void* payload,
                      std::size_t length);

std::string MakeAck(std::uint16_t commandId, std::uint16_t status);
std::string MakeSleepNotice(protocol::SleepNotice notice);

/// A frame with a message's payload image.
template <typename Message> std::string MakeMessage(protocol::MessageType type, const Message& message)
{
    const auto number = static_cast<std::uint32_t>(type);
    return MakeFrame(static_cast<std::uint16_t>(protocol::RptMessage + number), 0, 0, &message, sizeof message);
}

/// Bits of MsgLoc::validMask.
enum LocValid : std::uint32_t {
    LocTimeValid = 1,
    LocPositionValid = 2,
    LocClockValid = 4,
    LocSpeedValid = 8,
};

protocol::MsgLoc MakeLoc(const Epoch& epoch);
protocol::MsgMeas MakeMeas(const Epoch& epoch);
protocol::MsgPdrComm MakePdrComm(const Epoch& epoch, double deltaTime);
protocol::MsgPdrMeas MakePdrMeas(const Epoch& epoch);
protocol::MsgPdrLs MakePdrLs(const Epoch& epoch);
protocol::MsgFtmCn0 MakeFtmCn0(const Epoch& epoch);

} // namespace receiver
