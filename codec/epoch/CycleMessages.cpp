// SPDX-License-Identifier: MIT
#include "codec/epoch/CycleMessages.h"

#include <algorithm>
#include <cstring>

namespace codec {

namespace {

constexpr unsigned Bit(protocol::MessageType type)
{
    return 1U << type;
}

} // namespace

void CycleMessages::Take(const protocol::MsgGga& gga)
{
    m_gga = gga;
    m_messages |= Bit(protocol::MsgTypeGga);
}

void CycleMessages::Take(const protocol::MsgRmc& rmc)
{
    m_rmc = rmc;
    m_messages |= Bit(protocol::MsgTypeRmc);
}

void CycleMessages::Take(const protocol::MsgGll& gll)
{
    m_gll = gll;
    m_messages |= Bit(protocol::MsgTypeGll);
}

void CycleMessages::Take(const protocol::MsgVtg& vtg)
{
    m_vtg = vtg;
    m_messages |= Bit(protocol::MsgTypeVtg);
}

void CycleMessages::Take(const protocol::MsgZda& zda)
{
    m_zda = zda;
    m_messages |= Bit(protocol::MsgTypeZda);
}

void CycleMessages::Take(const GsaSentence& sentence, int number)
{
    m_messages |= Bit(protocol::MsgTypeGsa);
    if (number >= 0) {
        protocol::GsaBlock& block = m_gsa.block[number];
        block.valid = 1;
        block.optMode = sentence.optMode;
        block.posMode = sentence.posMode;
        block.pdop = sentence.pdop;
        block.hdop = sentence.hdop;
        block.vdop = sentence.vdop;
        for (int i = 0; i < sentence.count; ++i) {
            const GsaSentence::Used& used = sentence.used[i];
            const std::uint8_t prn = used.number <= 255 ? static_cast<std::uint8_t>(used.number) : used.id.svid;
            const std::uint8_t* last = block.prn + block.validPrnNum;
            if (block.validPrnNum < protocol::kGsaPrns &&
                std::find<const std::uint8_t*>(block.prn, last, prn) == last) {
                block.prn[block.validPrnNum++] = prn;
            }
        }
    }
}

void CycleMessages::Take(const GsvSentence& gsv, int number)
{
    m_messages |= Bit(protocol::MsgTypeGsv);
    if (number >= 0) {
        protocol::GsvBlock& block = m_gsv.block[number];
        block.gsvNum = static_cast<std::uint16_t>(std::clamp(gsv.total, 0, 65535));
        block.gsvNo = static_cast<std::uint16_t>(std::clamp(gsv.number, 0, 65535));
        for (int i = 0; i < gsv.count && block.satellitesNum < protocol::kGsvRows; ++i) {
            const GsvSentence::Entry& entry = gsv.entry[i];
            block.row[block.satellitesNum++] = {static_cast<std::uint16_t>(entry.number), entry.elevation,
                                                entry.azimuth, entry.cn0, gsv.signalId};
        }
    }
}

template <typename Message>
void CycleMessages::SendOne(RecordSink& sink, std::uint32_t msgType, const Message& message)
{
    if ((m_messages >> msgType & 1) == 0) {
        return;
    }
    std::uint8_t record[protocol::kMessageHeaderSize + sizeof(Message)];
    std::memcpy(record, &msgType, sizeof msgType);
    std::memcpy(record + protocol::kMessageHeaderSize, &message, sizeof message);
    sink.OnMessage(msgType, record, sizeof message);
}

void CycleMessages::Send(RecordSink& sink)
{
    SendOne(sink, protocol::MsgTypeGga, m_gga);
    SendOne(sink, protocol::MsgTypeRmc, m_rmc);
    SendOne(sink, protocol::MsgTypeGsv, m_gsv);
    SendOne(sink, protocol::MsgTypeGsa, m_gsa);
    SendOne(sink, protocol::MsgTypeGll, m_gll);
    SendOne(sink, protocol::MsgTypeVtg, m_vtg);
    SendOne(sink, protocol::MsgTypeZda, m_zda);
    m_messages = 0;
}

} // namespace codec
