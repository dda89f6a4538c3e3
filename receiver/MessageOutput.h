// SPDX-License-Identifier: MIT
#pragma once

#include "receiver/FaultyOutput.h"

#include <cstdint>
#include <string>
#include <vector>

namespace receiver {

/// What the chip says: frames in the form of its product, texts, and acknowledgements as the faults want them.
class MessageOutput {
public:
    MessageOutput(const Faults& faults, std::uint64_t seed, int product)
        : m_faults(faults), m_product(product), m_output(faults, seed)
    {
    }

    /// Lets go out what is due up to now.
    void Advance(Millis now);
    /// When Advance has something to do, or a time far away.
    Millis NextEvent() const;

    void SendAck(std::uint16_t commandId, std::uint16_t status, Millis now);
    void SendFrame(std::string frame, Millis now);
    /// Bytes that go out as they are.
    void SendText(std::string text, Millis now);

    /// Forgets the acknowledgements that are late.
    void DropLate() { m_later.clear(); }

    std::vector<std::string> Take() { return m_output.Take(); }

private:
    struct Later {
        Millis at;
        std::string message;
    };

    Faults m_faults;
    int m_product;
    FaultyOutput m_output;
    std::vector<Later> m_later;
    std::int64_t m_acksLost = 0;
};

} // namespace receiver
