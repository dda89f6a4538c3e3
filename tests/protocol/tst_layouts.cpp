// SPDX-License-Identifier: MIT
#include "Zeroed.h"

#include "protocol/CommandFrames.h"
#include "protocol/Constellations.h"
#include "protocol/FirmwareImage.h"
#include "protocol/GnssCbType.h"
#include "protocol/LoaderMessages.h"
#include "protocol/Records.h"

#include <QtTest>

#include <cstring>

// The images of the records that cross the codec boundary and of what lies in files, with a value of its own in
// each field: the bytes tell the places and widths.

namespace {

using namespace protocol;

template <typename Record> QByteArray Image(const Record& record)
{
    return QByteArray(reinterpret_cast<const char*>(&record), sizeof record);
}

/// The bytes of fields that stand one behind the other.
template <typename... Field> QByteArray Joined(const Field&... field)
{
    return (QByteArray() + ... + Image(field));
}

using U8 = std::uint8_t;
using U32 = std::uint32_t;

} // namespace

class LayoutsTest : public QObject {
    Q_OBJECT

private slots:
    void SatelliteEntries()
    {
        const auto hex = [](const char* text) { return QByteArray::fromHex(text); };
        PackageRecord package{};
        package.type = 4;
        package.direction = 1;
        package.subType = 0x8003;
        package.length = 0x1D0C;
        QCOMPARE(Image(package), hex("04 01 0380 0c1d"));
        CbRecvAckType ack{};
        ack.commandId = 0x0404;
        ack.status = 2;
        QCOMPARE(Image(ack), hex("0404 0200"));

        Cn0RecordOf<1> cn0{};
        cn0.count = 1;
        cn0.entry[0].constellation = 'E';
        cn0.entry[0].svid = 33;
        cn0.entry[0].cn0 = 47;
        cn0.entry[0].inuseFlag = 2;
        cn0.entry[0].carrierFreq = 1.5F;
        QCOMPARE(Image(cn0), hex("01 45 21 2f 02 0000c03f"));
        SatPosRecordOf<1> positions{};
        positions.count = 1;
        positions.reserved = 9;
        positions.entry[0].constellation = 'C';
        positions.entry[0].svid = 8;
        positions.entry[0].elevation = 53;
        positions.entry[0].reserved = 7;
        positions.entry[0].azimuth = 308;
        positions.entry[0].inuseFlag = 1;
        positions.entry[0].cn0 = 39;
        QCOMPARE(Image(positions), hex("01 09 43 08 35 07 3401 01 27"));
        KpiCn0RecordOf<1> kpi{};
        kpi.count = 1;
        kpi.entry[0].constellation = 'J';
        kpi.entry[0].group = 3;
        kpi.entry[0].inuseFlag = 1;
        kpi.entry[0].cn0 = 42;
        QCOMPARE(Image(kpi), hex("01 4a 03 01 2a"));
        QCOMPARE(sizeof(NmeaText), std::size_t(4097));
    }

    void Places()
    {
        Zeroed<PositionRecord> position;
        position->latitude = 47.5;
        position->longitude = 8.25;
        position->altitude = 408.0;
        position->fixMode = FixRtkFloat;
        QCOMPARE(position.Bytes(), Joined(47.5, 8.25, 408.0, U8(5)) + QByteArray(7, '\0'));
        QCOMPARE(kPositionRecordMinSize, std::size_t(25));
        Zeroed<CompassRecord> compass;
        compass->heading = 149.5F;
        compass->fixMode = FixDifferential;
        QCOMPARE(compass.Bytes(), Joined(149.5F, U8(2)) + QByteArray(3, '\0'));
        QCOMPARE(kCompassRecordMinSize, std::size_t(5));

        Zeroed<FixRecord> fix;
        fix->longitude = 8.25;
        fix->latitude = 47.5;
        fix->altitude = 408.0;
        fix->year = 2026;
        fix->month = 3;
        fix->day = 14;
        fix->hour = 9;
        fix->minute = 26;
        fix->second = 53.5;
        fix->fixMode = FixEstimated;
        fix->speed = 1.5F;
        fix->heading = 149.5F;
        fix->pdop = 2.5F;
        fix->hdop = 0.75F;
        fix->vdop = 1.25F;
        QCOMPARE(fix.Bytes(), Joined(8.25, 47.5, 408.0, U32(2026), U32(3), U32(14), U32(9), U32(26), U32(0), 53.5,
                                     U32(6), 1.5F, 149.5F, 2.5F, 0.75F, 1.25F));
        Zeroed<KpiFixRecord> kpi;
        kpi->longitude = 8.25;
        kpi->latitude = 47.5;
        kpi->altitude = 408.0;
        kpi->year = 2026;
        kpi->month = 3;
        kpi->day = 14;
        kpi->hour = 9;
        kpi->minute = 26;
        kpi->second = 53.5;
        kpi->speed = 1.5F;
        kpi->heading = 149.5F;
        QCOMPARE(kpi.Bytes(), Joined(8.25, 47.5, 408.0, U32(2026), U32(3), U32(14), U32(9), U32(26), U32(0), 53.5,
                                     1.5F, 149.5F));
    }

    void CallbackNumbers()
    {
        const QVector<int> numbers = {CB_NMEA,          CB_PACKAGE,      CB_CN0,       CB_POSITION,
                                      CB_SAT_POS,       CB_COMPASS,      CB_DATA,      CB_MESSAGE,
                                      CB_ACK,           CB_SLEEP_WAKEUP, CB_UART_SEND, CB_KPI_POSITION,
                                      CB_KPI_SATELLITE, CB_FIRST_FIX,    CB_HIS_INFO};
        QCOMPARE(numbers, (QVector<int>{0, 3, 100, 101, 102, 103, 200, 300, 400, 500, 501, 600, 601, 700, 701}));
    }

    void ConstellationsAndTheirOrders()
    {
        QByteArray letters;
        QStringList names;
        for (const ConstellationRow& row : kConstellationTable) {
            letters += row.letter;
            names.append(QString("%1 %2 %3").arg(row.name, row.talker, QString::number(row.nmeaSystemId)));
        }
        QCOMPARE(letters, QByteArray("GSREJCI"));
        QCOMPARE(names, (QStringList{"GPS GP 1", "SBAS  0", "GLONASS GL 2", "Galileo GA 3", "QZSS GQ 5",
                                     "BeiDou GB 4", "NavIC GI 6"}));
        const auto order = [](const auto& list) {
            QByteArray text;
            for (const Constellation each : list) {
                text += RowOf(each).letter;
            }
            return text;
        };
        QCOMPARE(order(kSettingOrder), QByteArray("GCREJ"));
        QCOMPARE(order(kBlockOrder), QByteArray("GCERJ"));
        QCOMPARE(order(kNmeaSystemOrder), QByteArray("GRECJI"));
        QCOMPARE(order(kAgnssOrder), QByteArray("GRCE"));
        QCOMPARE(order(kEphemerisOrder), QByteArray("GRCEJ"));
        QCOMPARE(order(kColumnOrder), QByteArray("RCEJ"));
    }

    void LoaderMessagesAndImages()
    {
        // "VLDR", kind, 0, length, number, rest, CRC-32.
        const QByteArray data = QByteArray::fromHex("564c4452 02 00 0700 04030201 616263 354447fb");
        const std::string made = MakeLoaderMessage(LoaderMessage::Data, 0x01020304, "abc");
        QCOMPARE(QByteArray::fromStdString(made), data);
        const LoaderHeader header = ReadLoaderHeader(made);
        QVERIFY(header.kind == LoaderMessage::Data && header.length == 7);
        QCOMPARE(int(LoaderMessage::Begin) * 100 + int(LoaderMessage::End), 103);
        QVERIFY(kAnswerBegin == "CG" && kAnswerData == "C\x06" && kAnswerEnd == "G\x06" &&
                kAnswerRefused == "C\x15");

        // A header, records of 3 and 0 bytes, one that terminates.
        const QByteArray file = QByteArray::fromHex("ffffffff 0300 616263 0000 0500 5155495420");
        int at = 0;
        FirmwareImage image([&](char* out, std::size_t size) {
            const QByteArray piece = file.mid(at, int(size));
            std::memcpy(out, piece.constData(), std::size_t(piece.size()));
            at += piece.size();
            return std::size_t(piece.size());
        });
        FirmwareRecord record;
        QVERIFY(image.ReadHeader());
        QVERIFY(image.Next(record) && record.message == "abc" && record.whole && !record.Terminates());
        QVERIFY(image.Next(record) && record.skipped);
        QVERIFY(image.Next(record) && record.message == "QUIT " && record.Terminates());
        QVERIFY(!image.Next(record));
    }
};

QTEST_GUILESS_MAIN(LayoutsTest)
#include "tst_layouts.moc"
