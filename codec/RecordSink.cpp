#include "codec/RecordSink.h"

namespace gnss {

void RecordSink::OnRecord(GnssCbType, const void*, std::size_t) {}

void RecordSink::OnSentence(const char*, std::size_t) {}

void RecordSink::OnNmeaText(const NmeaText& record)
{
    OnRecord(CB_NMEA, &record, sizeof record);
}

void RecordSink::OnPackage(const PackageRecord& record)
{
    OnRecord(CB_PACKAGE, &record, sizeof record);
}

void RecordSink::OnCn0(const Cn0Record& record)
{
    OnRecord(CB_CN0, &record, 1 + record.count * sizeof(Cn0Entry));
}

void RecordSink::OnPosition(const PositionRecord& record)
{
    OnRecord(CB_POSITION, &record, sizeof record);
}

void RecordSink::OnSatPos(const SatPosRecord& record)
{
    OnRecord(CB_SAT_POS, &record, 2 + record.count * sizeof(SatPosEntry));
}

void RecordSink::OnCompass(const CompassRecord& record)
{
    OnRecord(CB_COMPASS, &record, sizeof record);
}

void RecordSink::OnFix(const FixRecord& record)
{
    OnRecord(CB_DATA, &record, sizeof record);
}

void RecordSink::OnMessage(std::uint32_t, const std::uint8_t* record, std::size_t payloadLength)
{
    OnRecord(CB_MESSAGE, record, kMessageHeaderSize + payloadLength);
}

void RecordSink::OnAck(const CbRecvAckType& record)
{
    OnRecord(CB_ACK, &record, sizeof record);
}

void RecordSink::OnWakeUpNeeded()
{
    OnRecord(CB_SLEEP_WAKEUP, nullptr, 0);
}

void RecordSink::OnKpiFix(const KpiFixRecord& record)
{
    OnRecord(CB_KPI_POSITION, &record, sizeof record);
}

void RecordSink::OnKpiCn0(const KpiCn0Record& record)
{
    OnRecord(CB_KPI_SATELLITE, &record, 1 + record.count * sizeof(KpiCn0Entry));
}

void RecordSink::OnFirstFix()
{
    OnRecord(CB_FIRST_FIX, nullptr, 0);
}

void RecordSink::OnHistory(const std::uint8_t* block, std::size_t length)
{
    OnRecord(CB_HIS_INFO, block, length);
}

} // namespace gnss
