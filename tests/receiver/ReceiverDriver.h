// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/LinkFrame.h"
#include "receiver/Receiver.h"
#include "receiver/ReportWriter.h"
#include "receiver/TextNumbers.h"

#include <QtTest>

#include <string>
#include <vector>

inline std::string Hex(const char* hex)
{
    return QByteArray::fromHex(hex).toStdString();
}

inline std::string Frame(int id, const std::string& payload, int word1 = 0)
{
    return receiver::MakeFrame(std::uint16_t(id), std::uint16_t(word1), 0, payload.data(), payload.size());
}

inline bool IsFrame(const std::string& message, protocol::FrameView& view)
{
    return protocol::ReadFrame(reinterpret_cast<const std::uint8_t*>(message.data()), message.size(), view);
}

inline bool IsSentence(const std::string& message, const char* formatter)
{
    return message.size() > 6 && message[0] == '$' && message.compare(3, 3, formatter) == 0;
}

inline std::string Field(const std::string& sentence, int index)
{
    return QString::fromStdString(sentence).section('*', 0, 0).section(',', index, index).toStdString();
}

inline double Number(const std::string& sentence, int index)
{
    return QByteArray::fromStdString(Field(sentence, index)).toDouble();
}

inline std::string Joined(const std::vector<std::string>& messages)
{
    std::string all;
    for (const std::string& message : messages) {
        all += message;
    }
    return all;
}

inline const std::string kStart = Hex("7e0419000100030000000c000100000001000100000000007e");
inline const std::string kStop = Hex("7e040d0002000000000000007e");
inline const std::string kColdStart = Hex("7e041200030003000000050001000100017e");
inline const std::string kHotStart = Hex("7e041200030002000000050001000100007e");

/// A receiver with a clock of its own, and what it has said so far.
class ReceiverDriver {
public:
    static receiver::ReceiverOptions Options(const char* fault = nullptr)
    {
        static const receiver::ReceiverOptions fresh;
        auto options = fresh;
        options.utcAtPowerOn = 1773480413400; // 2026-03-14 09:26:53.4
        std::string error;
        if (fault != nullptr && !options.faults.Add(fault, error)) {
            qFatal("%s", error.c_str());
        }
        return options;
    }
    static receiver::ReceiverOptions Idle(const char* fault = nullptr)
    {
        auto options = Options(fault);
        options.idle = true;
        return options;
    }
    static receiver::ReceiverOptions Kept(const char* fault = nullptr)
    {
        auto options = Options(fault);
        options.memoryKept = true;
        return options;
    }

    explicit ReceiverDriver(const receiver::ReceiverOptions& options = Options()) : receiver(options)
    {
        Collect();
    }

    void Run(receiver::Millis millis)
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

    /// What comes in answer, at once and within `millis`.
    std::string Answer(const std::string& bytes, receiver::Millis millis = 0)
    {
        messages.clear();
        SendBytes(bytes);
        Run(millis);
        return Joined(messages);
    }

    /// What comes in the next `millis` alone.
    void Listen(receiver::Millis millis) { Answer({}, millis); }

    /// Sends a command and returns the status of the one acknowledgement that
    /// answers it; -1 without one.
    int Command(const std::string& frame)
    {
        messages.clear();
        SendBytes(frame);
        int status = -1;
        for (const std::string& ack : Frames(protocol::RptAck)) {
            if (status != -1 || ack.size() != 17 || ack.compare(12, 2, frame, 4, 2) != 0) {
                return -2;
            }
            status = protocol::ReadU16(reinterpret_cast<const std::uint8_t*>(&ack[14]));
        }
        return status;
    }
    int Command(int id, const std::string& payload, int word1 = 0) { return Command(Frame(id, payload, word1)); }

    int CountSentences(const char* formatter) const
    {
        return static_cast<int>(std::count_if(messages.begin(), messages.end(),
                                              [&](const auto& each) { return IsSentence(each, formatter); }));
    }

    std::vector<std::string> Frames(int id) const
    {
        std::vector<std::string> found;
        protocol::FrameView view;
        for (const std::string& message : messages) {
            if (IsFrame(message, view) && view.id == id) {
                found.push_back(message);
            }
        }
        return found;
    }

    /// Seconds from now to the first valid fix, looking at most `limit` seconds
    /// ahead; -1 without one.
    double SecondsToFix(int limit)
    {
        const receiver::Millis begin = now;
        while (now - begin < receiver::Millis{limit} * 1000) {
            Listen(100);
            for (const std::string& message : messages) {
                if (IsSentence(message, "RMC") && Field(message, 2) == "A") {
                    return static_cast<double>(now - begin) / 1000.0;
                }
            }
        }
        return -1.0;
    }

    receiver::Receiver receiver;
    receiver::Millis now = 0;
    std::vector<std::string> messages;

private:
    void Collect()
    {
        for (std::string& message : receiver.TakeOutput()) {
            messages.push_back(std::move(message));
        }
    }
};
