// SPDX-License-Identifier: MIT
#include "codec/RecordSink.h"

namespace codec {

void RecordSink::OnRecord(protocol::GnssCbType, const void*, std::size_t) {}

void RecordSink::OnSentence(const char*, std::size_t) {}

void RecordSink::OnNmeaText(const protocol::NmeaText& record)
{
    OnRecord(protocol::CB_NMEA, &record, sizeof record);
}

void RecordSink::OnPackage(const protocol::PackageRecord& record)
{
    OnRecord(protocol::CB_PACKAGE, &record, sizeof record);
}

void RecordSink::OnCn0(const protocol::Cn0Record& record)
{
    OnRecord(protocol::CB_CN0, &record, 1 + record.count * sizeof(protocol::Cn0Entry));
}

void RecordSink::OnPosition(const protocol::PositionRecord& record)
{
    OnRecord(protocol::CB_POSITION, &record, sizeof record);
}

void RecordSink::OnSatPos(const protocol::SatPosRecord& record)
{
    OnRecord(protocol::CB_SAT_POS, &record, 2 + record.count * sizeof(protocol::SatPosEntry));
}

void RecordSink::OnCompass(const protocol::CompassRecord& record)
{
    OnRecord(protocol::CB_COMPASS, &record, sizeof record);
}

void RecordSink::OnFix(const protocol::FixRecord& record)
{
    OnRecord(protocol::CB_DATA, &record, sizeof record);
}

void RecordSink::OnMessage(std::uint32_t, const std::uint8_t* record, std::size_t payloadLength)
{
    OnRecord(protocol::CB_MESSAGE, record, protocol::kMessageHeaderSize + payloadLength);
}

void RecordSink::OnAck(const protocol::CbRecvAckType& record)
{
    OnRecord(protocol::CB_ACK, &record, sizeof record);
}

void RecordSink::OnWakeUpNeeded()
{
    OnRecord(protocol::CB_SLEEP_WAKEUP, nullptr, 0);
}

void RecordSink::OnKpiFix(const protocol::KpiFixRecord& record)
{
    OnRecord(protocol::CB_KPI_POSITION, &record, sizeof record);
}

void RecordSink::OnKpiCn0(const protocol::KpiCn0Record& record)
{
    OnRecord(protocol::CB_KPI_SATELLITE, &record, 1 + record.count * sizeof(protocol::KpiCn0Entry));
}

void RecordSink::OnFirstFix()
{
    OnRecord(protocol::CB_FIRST_FIX, nullptr, 0);
}

void RecordSink::OnHistory(const std::uint8_t* block, std::size_t length)
{
    OnRecord(protocol::CB_HIS_INFO, block, length);
}

} // namespace codec
