// SPDX-License-Identifier: MIT
#pragma once

#include "codec/RecordSink.h"
#include "codec/nmea/SatelliteSentences.h"
#include "protocol/Records.h"

#include <cstdint>

namespace codec {

/// The sentences of a cycle in the records that show them.
class CycleMessages {
public:
    void Clear() { m_messages = 0; }
    bool Empty() const { return m_messages == 0; }

    void Take(const protocol::MsgGga& gga);
    void Take(const protocol::MsgRmc& rmc);
    void Take(const protocol::MsgGll& gll);
    void Take(const protocol::MsgVtg& vtg);
    void Take(const protocol::MsgZda& zda);

    /// Empty the blocks of used and of listed satellites: a cycle's first sentence has come.
    void BeginGsa() { m_gsa = {}; }
    void BeginGsv() { m_gsv = {}; }
    /// `number` is the sentence's block, negative for none.
    void Take(const GsaSentence& sentence, int number);
    void Take(const GsvSentence& gsv, int number);

    /// Hands over the records that the cycle has, and forgets them.
    void Send(RecordSink& sink);

private:
    template <typename Message> void SendOne(RecordSink& sink, std::uint32_t msgType, const Message& message);

    unsigned m_messages = 0; ///< bit per MessageType that the cycle has
    protocol::MsgGga m_gga{};
    protocol::MsgRmc m_rmc{};
    protocol::MsgGll m_gll{};
    protocol::MsgVtg m_vtg{};
    protocol::MsgZda m_zda{};
    protocol::MsgGsv m_gsv{};
    protocol::MsgGsa m_gsa{};
};

} // namespace codec
