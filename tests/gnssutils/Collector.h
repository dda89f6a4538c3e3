#pragma once

#include "gnssutils/Codec.h"

#include <QByteArray>
#include <QByteArrayList>
#include <QFile>
#include <QVector>

#include <cstring>

/// Keeps everything that a codec hands over.
class Collector : public gnss::RecordSink {
public:
    struct Message {
        quint32 type;
        QByteArray payload;
    };

    void OnRecord(GnssCbType type, const void* data, std::size_t length) override
    {
        numbers.append(type);
        images.append(QByteArray(static_cast<const char*>(data), static_cast<int>(length)));
    }
    void OnSentence(const char* text, std::size_t length) override
    {
        whole.append(QByteArray(text, static_cast<int>(length)));
    }
    void OnNmeaText(const gnss::NmeaText& record) override
    {
        overfull = overfull || record.count == 0 || record.count > gnss::kNmeaSlots;
        for (int i = 0; i < record.count && i < int(gnss::kNmeaSlots); ++i) {
            overfull = overfull || strnlen(record.slot[i], gnss::kNmeaSlotSize) == gnss::kNmeaSlotSize;
            slots_.append(QByteArray(record.slot[i]));
        }
        ++textRecords;
    }
    void OnFix(const gnss::FixRecord& record) override
    {
        fixes.append(record);
        RecordSink::OnFix(record);
    }
    void OnCn0(const gnss::Cn0Record& record) override
    {
        cn0 = record;
        RecordSink::OnCn0(record);
    }
    void OnSatPos(const gnss::SatPosRecord& record) override
    {
        satPos = record;
        RecordSink::OnSatPos(record);
    }
    void OnKpiCn0(const gnss::KpiCn0Record& record) override
    {
        kpiCn0 = record;
        RecordSink::OnKpiCn0(record);
    }
    void OnCompass(const gnss::CompassRecord& record) override
    {
        compass = record;
        RecordSink::OnCompass(record);
    }
    void OnMessage(quint32 type, const quint8* record, std::size_t length) override
    {
        messages.append({type, QByteArray(reinterpret_cast<const char*>(record) + 4, static_cast<int>(length))});
        RecordSink::OnMessage(type, record, length);
    }

    int Count(GnssCbType type) const { return numbers.count(type); }
    /// Images of one number, in order.
    QByteArrayList Images(GnssCbType type) const
    {
        QByteArrayList result;
        for (int i = 0; i < numbers.size(); ++i) {
            if (numbers[i] == type) {
                result.append(images[i]);
            }
        }
        return result;
    }
    template <typename Payload> Payload LastMessage(quint32 type) const
    {
        Payload payload{};
        for (const Message& message : messages) {
            if (message.type == type && message.payload.size() == int(sizeof payload)) {
                std::memcpy(&payload, message.payload.constData(), sizeof payload);
            }
        }
        return payload;
    }
    QVector<gnss::FixRecord> ValidFixes() const
    {
        QVector<gnss::FixRecord> result;
        for (const gnss::FixRecord& fix : fixes) {
            if (fix.fixMode != 0) {
                result.append(fix);
            }
        }
        return result;
    }

    QVector<GnssCbType> numbers; ///< all records but the text, in order
    QVector<QByteArray> images;
    QByteArrayList slots_;
    QByteArrayList whole;
    QVector<gnss::FixRecord> fixes;
    QVector<Message> messages;
    gnss::Cn0Record cn0{};
    gnss::SatPosRecord satPos{};
    gnss::KpiCn0Record kpiCn0{};
    gnss::CompassRecord compass{};
    int textRecords = 0;
    bool overfull = false;
};

inline void Feed(gnss::Codec& codec, const QByteArray& bytes)
{
    codec.Decode(reinterpret_cast<const quint8*>(bytes.constData()), static_cast<std::size_t>(bytes.size()));
}

/// A sentence with its checksum and line end, from what stands between '$' and '*'.
inline QByteArray Sentence(const QByteArray& body, const QByteArray& lineEnd = "\r\n")
{
    quint8 sum = 0;
    for (const char c : body) {
        sum = quint8(sum ^ quint8(c));
    }
    return '$' + body + '*' + QByteArray::number(sum, 16).rightJustified(2, '0').toUpper() + lineEnd;
}

inline QByteArray Frame(quint16 id, const QByteArray& payload, quint16 word1 = 0, quint16 word2 = 0)
{
    QByteArray frame(int(gnss::kFrameOverhead) + payload.size(), '\0');
    const std::size_t length =
        gnss::WriteFrame(reinterpret_cast<quint8*>(frame.data()), std::size_t(frame.size()), id, word1, word2,
                         payload.constData(), std::size_t(payload.size()));
    return length == std::size_t(frame.size()) ? frame : QByteArray();
}

inline QByteArray ReadAll(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
