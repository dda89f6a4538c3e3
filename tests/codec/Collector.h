// SPDX-License-Identifier: MIT
#pragma once

#include "Sentence.h"

#include "codec/Codec.h"

#include <QByteArrayList>
#include <QVector>

#include <cstring>

/// Keeps everything that a codec hands over.
class Collector : public codec::RecordSink {
public:
    void OnRecord(protocol::GnssCbType type, const void* data, std::size_t length) override
    {
        numbers.append(type);
        images.append(QByteArray(static_cast<const char*>(data), static_cast<int>(length)));
    }
    void OnSentence(const char* text, std::size_t length) override
    {
        whole.append(QByteArray(text, static_cast<int>(length)));
    }
    void OnNmeaText(const protocol::NmeaText& record) override
    {
        overfull = overfull || record.count == 0 || record.count > protocol::kNmeaSlots;
        for (int i = 0; i < record.count && i < int(protocol::kNmeaSlots); ++i) {
            overfull = overfull || strnlen(record.slot[i], protocol::kNmeaSlotSize) == protocol::kNmeaSlotSize;
            slots_.append(QByteArray(record.slot[i]));
        }
        ++textRecords;
    }
    void OnKpiCn0(const protocol::KpiCn0Record& record) override
    {
        kpiCn0 = record;
        RecordSink::OnKpiCn0(record);
    }

    int Count(protocol::GnssCbType type) const { return numbers.count(type); }
    /// Images of one number, in order.
    QByteArrayList Images(protocol::GnssCbType type) const
    {
        QByteArrayList result;
        for (int i = 0; i < numbers.size(); ++i) {
            if (numbers[i] == type) {
                result.append(images[i]);
            }
        }
        return result;
    }
    /// An image as a record, zeros behind its end.
    template <typename Record> static Record As(const QByteArray& image)
    {
        Record record{};
        std::memcpy(&record, image.constData(), qMin(sizeof record, std::size_t(image.size())));
        return record;
    }
    template <typename Record> Record Last(protocol::GnssCbType type) const
    {
        return As<Record>(Images(type).value(Count(type) - 1));
    }
    template <typename Payload> Payload LastMessage(quint32 type) const
    {
        Payload payload{};
        for (const QByteArray& image : Images(protocol::CB_MESSAGE)) {
            if (As<quint32>(image) == type && image.size() == int(4 + sizeof payload)) {
                payload = As<Payload>(image.mid(4));
            }
        }
        return payload;
    }
    QVector<protocol::FixRecord> Fixes(bool onlyValid = false) const
    {
        QVector<protocol::FixRecord> result;
        for (const QByteArray& image : Images(protocol::CB_DATA)) {
            const auto fix = As<protocol::FixRecord>(image);
            if (fix.fixMode != 0 || !onlyValid) {
                result.append(fix);
            }
        }
        return result;
    }

    QVector<protocol::GnssCbType> numbers; ///< all records but the text, in order
    QVector<QByteArray> images;
    QByteArrayList slots_;
    QByteArrayList whole;
    protocol::KpiCn0Record kpiCn0{}; ///< also what lies behind its image
    int textRecords = 0;
    bool overfull = false;
};

inline void Feed(codec::Codec& codec, const QByteArray& bytes)
{
    codec.Decode(reinterpret_cast<const quint8*>(bytes.constData()), static_cast<std::size_t>(bytes.size()));
}

/// A codec and what it has found.
struct Link {
    Link() : codec(&got) {}
    void Say(const QByteArray& bytes) { Feed(codec, bytes); }
    /// Encodes and returns the frame; empty for a negative result.
    QByteArray Encode(quint32 id, const QByteArray& payload, int outSize = 15000)
    {
        QByteArray out(outSize, '\0');
        const int length =
            codec.Encode(id, payload.constData(), std::size_t(payload.size()), out.data(), std::size_t(outSize));
        return length < 0 ? QByteArray() : out.left(length);
    }

    Collector got;
    codec::Codec codec;
};

inline QByteArray Frame(int id, const QByteArray& payload, int word1 = 0, int word2 = 0)
{
    QByteArray frame(int(protocol::kFrameOverhead) + payload.size(), '\0');
    const std::size_t length =
        protocol::WriteFrame(reinterpret_cast<quint8*>(frame.data()), std::size_t(frame.size()), quint16(id),
                             quint16(word1), quint16(word2), payload.constData(), std::size_t(payload.size()));
    return length == std::size_t(frame.size()) ? frame : QByteArray();
}
