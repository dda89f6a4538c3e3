#pragma once

#include "protocol/LinkFrame.h"
#include "protocol/MessageRecords.h"
#include "receiver/Epoch.h"

#include <string>

namespace vrx {

/// A whole frame from the receiver.
std::string MakeFrame(std::uint16_t id, std::uint16_t word1, std::uint16_t word2, const void* payload,
                      std::size_t length);

std::string MakeAck(std::uint16_t commandId, std::uint16_t status);

/// A frame with a message's payload image.
template <typename Message> std::string MakeMessage(gnss::MessageType type, const Message& message)
{
    return MakeFrame(static_cast<std::uint16_t>(gnss::RptMessage + type), 0, 0, &message, sizeof message);
}

/// Bits of MsgLoc::validMask.
enum LocValid : std::uint32_t {
    LocTimeValid = 1,
    LocPositionValid = 2,
    LocClockValid = 4,
    LocSpeedValid = 8,
};

gnss::MsgLoc MakeLoc(const Epoch& epoch);
gnss::MsgMeas MakeMeas(const Epoch& epoch);
gnss::MsgPdrComm MakePdrComm(const Epoch& epoch, double deltaTime);
gnss::MsgPdrMeas MakePdrMeas(const Epoch& epoch);
gnss::MsgPdrLs MakePdrLs(const Epoch& epoch);
gnss::MsgFtmCn0 MakeFtmCn0(const Epoch& epoch);

} // namespace vrx
