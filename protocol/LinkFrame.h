// SPDX-License-Identifier: MIT
#pragma once

// The receiver link's frame and its ids: shared by the codec and the virtual receiver, free of Qt.
// docs/receiver-link.md describes the link in full.
//
//   offset 0     0x7E  start flag
//          1     0x04  frame class
//          2     u16   total length, both flags included (13 + n)
//          4     u16   command or report id
//          6     u16   first parameter word
//          8     u16   second parameter word
//         10     u16   payload length n
//         12     n     payload
//         12+n   0x7E  end flag
//
// All fields are little-endian. There is no checksum: a frame is recognised by its flags, its class and the
// agreement of its two lengths.

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace protocol {

constexpr std::uint8_t kFrameFlag = 0x7E;
constexpr std::uint8_t kFrameClass = 0x04;

// Where the fields of a frame begin.
constexpr std::size_t kFrameClassAt = 1;
constexpr std::size_t kFrameTotalAt = 2;
constexpr std::size_t kFrameIdAt = 4;
constexpr std::size_t kFrameWord1At = 6;
constexpr std::size_t kFrameWord2At = 8;
constexpr std::size_t kFrameLengthAt = 10;
constexpr std::size_t kFrameHeaderSize = kFrameLengthAt + sizeof(std::uint16_t);
constexpr std::size_t kFrameOverhead = kFrameHeaderSize + 1;
static_assert(kFrameLengthAt == 10 && kFrameHeaderSize == 12 && kFrameOverhead == 13);

constexpr std::size_t kMaxFrameLength = 15000;
constexpr std::size_t kMaxFramePayload = kMaxFrameLength - kFrameOverhead;

/// The history block fits one frame also in its AT form.
constexpr std::size_t kMaxHistoryBlock = 7400;

/// Host to receiver.
enum CommandId : std::uint16_t {
    CmdStart = 1,
    CmdStop = 2,
    CmdConstellations = 3,
    CmdStartMode = 4,
    CmdNmea = 5,
    CmdAcqLowPower = 6,
    CmdTrkLowPower = 7,
    CmdAntiJam = 8,
    CmdUpdateRate = 9,
    CmdPps = 10,
    CmdReports = 11,
    CmdFixPriority = 12,
    CmdInjectHistory = 257,
    CmdReadHistory = 258, ///< second parameter word 1
    CmdPassThrough = 512, ///< GnssEncode only: the payload is the ready frame
    CmdPgnssTime = 513,
    CmdPgnssPosition = 514,
    CmdPgnssGpsEphemeris = 515,
    CmdPgnssEphemeris = 516,
    CmdPgnssUtc = 517,
    CmdPgnssGpsIntegrity = 518,
    CmdPgnssIntegrity = 519,
    CmdPgnssIonosphere = 520,
    CmdPgnssGloChannels = 521,
    CmdPgnssFineIonosphere = 522,
    CmdAgnssGpsTime = 769,
    CmdAgnssPosition = 770,
    CmdAgnssGpsEphemeris = 771,
    CmdAgnssGpsIonosphere = 772,
    CmdAgnssUtc = 773,
    CmdAgnssGpsIntegrity = 774,
    CmdAgnssTime = 775,
    CmdAgnssIonosphere = 776,
    CmdAgnssEphemeris = 777,
    CmdAgnssIntegrity = 778,
    CmdAgnssUtcParameters = 779,
    CmdAgnssChannels = 780,
    CmdUtcTime = 1028,
};

/// First parameter words that give an id another meaning than the encoded command's, which has 0 there.
constexpr std::uint16_t kStartWord = 3;         ///< id 1: start positioning
constexpr std::uint16_t kHotStartWord = 2;      ///< id 3: hot start
constexpr std::uint16_t kColdStartWord = 3;     ///< id 3: cold start
constexpr std::uint16_t kNmeaMaskWord = 0x0104; ///< id 3: NMEA mask

/// Receiver to host.
enum ReportId : std::uint16_t {
    RptAck = 0x8001,     ///< u16 command id, u16 status
    RptSleep = 0x8002,   ///< u8: a SleepNotice
    RptHistory = 0x8003, ///< first word: part from 0; second word: number of parts
    RptMessage = 0x8100, ///< plus a MessageType: that message's payload image
};
constexpr std::uint16_t kRptMessageLast = 0x81FF;

/// The payload of RptSleep.
enum SleepNotice : std::uint8_t {
    SleepComing = 0, ///< about to sleep
    SleepWakeMe = 1, ///< asleep with work waiting
};

enum AckStatus : std::uint16_t {
    AckAccepted = 0,
    AckBadLength = 1,
    AckBadParameter = 2,
    AckRefused = 3,
};

/// AT text for receivers of product 31. A frame to the receiver is kAtHexCommand, its bytes as lower-case
/// hexadecimal digits, CR LF; one from the receiver is kAtHexReport, the digits, CR LF.
constexpr char kAtHexCommand[] = "AT+GNSSHEX=";
constexpr char kAtHexReport[] = "+GNSSHEX:";
constexpr int kAtProduct = 31;
constexpr int kReducedProduct = 27;

constexpr std::uint16_t ReadU16(const std::uint8_t* p)
{
    return static_cast<std::uint16_t>(p[0] | (p[1] << 8));
}

constexpr void WriteU16(std::uint8_t* p, std::uint16_t value)
{
    p[0] = static_cast<std::uint8_t>(value & 0xFF);
    p[1] = static_cast<std::uint8_t>(value >> 8);
}

/// Writes a frame. Returns its length, or 0 when it fits neither `capacity` nor the largest frame.
inline std::size_t WriteFrame(std::uint8_t* out, std::size_t capacity, std::uint16_t id, std::uint16_t word1,
                              std::uint16_t word2, const void* payload, std::size_t payloadLength)
{
    const std::size_t total = kFrameOverhead + payloadLength;
    if (payloadLength > kMaxFramePayload || total > capacity || (payload == nullptr && payloadLength > 0)) {
        return 0;
    }
    out[0] = kFrameFlag;
    out[kFrameClassAt] = kFrameClass;
    WriteU16(out + kFrameTotalAt, static_cast<std::uint16_t>(total));
    WriteU16(out + kFrameIdAt, id);
    WriteU16(out + kFrameWord1At, word1);
    WriteU16(out + kFrameWord2At, word2);
    WriteU16(out + kFrameLengthAt, static_cast<std::uint16_t>(payloadLength));
    if (payloadLength > 0) {
        std::memcpy(out + kFrameHeaderSize, payload, payloadLength);
    }
    out[total - 1] = kFrameFlag;
    return total;
}

struct FrameView {
    std::uint16_t id = 0;
    std::uint16_t word1 = 0;
    std::uint16_t word2 = 0;
    const std::uint8_t* payload = nullptr;
    std::size_t payloadLength = 0;
};

/// The length that a frame header claims, or 0 when these bytes cannot begin a frame. `available` may be
/// anything from 1 on; with fewer than 12 bytes a header that is right so far gives 12.
constexpr std::size_t ClaimedFrameLength(const std::uint8_t* p, std::size_t available)
{
    if (available == 0 || p[0] != kFrameFlag || (available > kFrameClassAt && p[kFrameClassAt] != kFrameClass)) {
        return 0;
    }
    if (available < kFrameIdAt) {
        return kFrameHeaderSize;
    }
    const std::size_t total = ReadU16(p + kFrameTotalAt);
    if (total < kFrameOverhead || total > kMaxFrameLength) {
        return 0;
    }
    if (available < kFrameHeaderSize) {
        return kFrameHeaderSize;
    }
    return total == kFrameOverhead + ReadU16(p + kFrameLengthAt) ? total : 0;
}

/// Reads a whole frame of exactly `length` bytes.
constexpr bool ReadFrame(const std::uint8_t* p, std::size_t length, FrameView& frame)
{
    if (length < kFrameOverhead || ClaimedFrameLength(p, length) != length || p[length - 1] != kFrameFlag) {
        return false;
    }
    frame.id = ReadU16(p + kFrameIdAt);
    frame.word1 = ReadU16(p + kFrameWord1At);
    frame.word2 = ReadU16(p + kFrameWord2At);
    frame.payload = p + kFrameHeaderSize;
    frame.payloadLength = length - kFrameOverhead;
    return true;
}

} // namespace protocol
