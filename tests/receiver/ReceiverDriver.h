#pragma once

#include "codec/Protocol.h"
#include "receiver/Receiver.h"
#include "receiver/ReportWriter.h"
#include "receiver/TextNumbers.h"

#include <QtTest>

#include <string>
#include <vector>

/// A receiver with a clock of its own, and what it has said so far.
class ReceiverDriver {
public:
    static vrx::ReceiverOptions Options()
    {
        vrx::ReceiverOptions options;
        options.utcAtPowerOn = vrx::FromFields({2026, 3, 14, 9, 26, 53, 400});
        return options;
    }

    explicit ReceiverDriver(const vrx::ReceiverOptions& options = Options()) : receiver(options) { Collect(); }

    void Run(vrx::Millis millis)
    {
        now += millis;
        receiver.Advance(now);
        Collect();
    }

    void SendBytes(const std::string& bytes)
    {
        receiver.Receive(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size(), now);
        Collect();
    }

    static std::string Bytes(const char* hex) { return QByteArray::fromHex(hex).toStdString(); }
    static std::string Frame(std::uint16_t id, const std::string& payload, std::uint16_t word1 = 0,
                             std::uint16_t word2 = 0)
    {
        return vrx::MakeFrame(id, word1, word2, payload.data(), payload.size());
    }

    /// Sends a command and returns the status of the one acknowledgement that answers it; -1 without one.
    int Command(const std::string& frame)
    {
        messages.clear();
        SendBytes(frame);
        int status = -1;
        for (const std::string& message : messages) {
            gnss::FrameView view;
            if (IsFrame(message, view) && view.id == gnss::RptAck) {
                if (status != -1 || view.payloadLength != 4 ||
                    gnss::ReadU16(view.payload) !=
                        gnss::ReadU16(reinterpret_cast<const std::uint8_t*>(&frame[4]))) {
                    return -2;
                }
                status = gnss::ReadU16(view.payload + 2);
            }
        }
        return status;
    }

    static bool IsFrame(const std::string& message, gnss::FrameView& view)
    {
        return gnss::ReadFrame(reinterpret_cast<const std::uint8_t*>(message.data()), message.size(), view);
    }

    static bool IsSentence(const std::string& message, const char* formatter)
    {
        return message.size() > 6 && message[0] == '$' && message.compare(3, 3, formatter) == 0;
    }

    int CountSentences(const char* formatter) const
    {
        int count = 0;
        for (const std::string& message : messages) {
            count += IsSentence(message, formatter) ? 1 : 0;
        }
        return count;
    }

    std::vector<std::string> Frames(std::uint16_t id) const
    {
        std::vector<std::string> found;
        gnss::FrameView view;
        for (const std::string& message : messages) {
            if (IsFrame(message, view) && view.id == id) {
                found.push_back(message);
            }
        }
        return found;
    }

    /// Seconds from now to the first valid fix, looking at most `limit` seconds ahead; -1 without one.
    double SecondsToFix(int limit)
    {
        const vrx::Millis begin = now;
        while (now - begin < limit * 1000) {
            messages.clear();
            Run(100);
            for (const std::string& message : messages) {
                if (IsSentence(message, "RMC") && Field(message, 2) == "A") {
                    return static_cast<double>(now - begin) / 1000.0;
                }
            }
        }
        return -1.0;
    }

    static std::string Field(const std::string& sentence, int index)
    {
        return QString::fromStdString(sentence).section('*', 0, 0).section(',', index, index).toStdString();
    }

    std::string History()
    {
        messages.clear();
        SendBytes(Bytes("7e040d0002010000010000007e"));
        std::string block;
        int part = 0;
        for (const std::string& frame : Frames(gnss::RptHistory)) {
            gnss::FrameView view;
            IsFrame(frame, view);
            if (view.word1 != part++) {
                return std::string();
            }
            block.append(reinterpret_cast<const char*>(view.payload), view.payloadLength);
        }
        return block;
    }

    vrx::Receiver receiver;
    vrx::Millis now = 0;
    std::vector<std::string> messages;

    static constexpr const char* kStart = "7e0419000100030000000c000100000001000100000000007e";
    static constexpr const char* kStop = "7e040d0002000000000000007e";
    static constexpr const char* kColdStart = "7e041200030003000000050001000100017e";
    static constexpr const char* kHotStart = "7e041200030002000000050001000100007e";

private:
    void Collect()
    {
        for (std::string& message : receiver.TakeOutput()) {
            messages.push_back(std::move(message));
        }
    }
};
