#include "assist/AgnssReply.h"
#include "assist/AgnssTags.h"
#include "assist/AssistRecords.h"
#include "assist/AssistRequest.h"
#include "assist/PositionInjection.h"
#include "assist/SceneLibrary.h"
#include "assist/SeedRules.h"

#include "LogCatcher.h"

#include <QFile>
#include <QMessageAuthenticationCode>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtEndian>
#include <QtTest>

#include <ctime>

namespace {

const QByteArray sampleKey = "7C21E9B04F6A3D58A1B7C6E02D94F83B5E1076DA3C8F42B9D06E7A15F3C2984B";

ServerInfo SampleServer(const QByteArray& path = "/lumat/v1/xgnss/pgnss")
{
    ServerInfo server;
    server.host = "assist.example.com";
    server.path = path;
    return server;
}

AuthInfo SampleAuth()
{
    AuthInfo auth;
    auth.appid = "qfixdemo1";
    auth.key = sampleKey;
    auth.keyLen = 64;
    auth.timestamp = 1742508000123;
    return auth;
}

QByteArray AuthLine(const QByteArray& signedText)
{
    return "HMAC-SHA256 appid=qfixdemo1,timestamp=1742508000123,signature=" +
           QMessageAuthenticationCode::hash(signedText, sampleKey, QCryptographicHash::Sha256).toBase64() + "\r\n";
}

void SetZone(const char* zone)
{
    qputenv("TZ", zone);
    tzset();
}

/// One record of a reply body.
QByteArray Record(quint16 tag, const QByteArray& payload)
{
    QByteArray record(4, '\0');
    qToLittleEndian(tag, record.data());
    qToLittleEndian(static_cast<quint16>(payload.size()), record.data() + 2);
    record += payload;
    record += static_cast<char>(
        AgnssChecksum(reinterpret_cast<const quint8*>(record.constData()), static_cast<quint16>(payload.size())));
    return record;
}

/// The tags of a body and how its walk ends.
QPair<QList<int>, AgnssWalk::Step> Walked(const QByteArray& body)
{
    AgnssWalk walk(body);
    AgnssRecord record;
    QList<int> tags;
    AgnssWalk::Step step;
    while ((step = walk.Next(record)) == AgnssWalk::Step::Record) {
        tags.append(record.tag);
    }
    return {tags, step};
}

} // namespace

class TestAssistRules : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { SetZone("UTC"); }

    void OfflineQueryIsSignedAndSent_data()
    {
        QTest::addColumn<quint32>("period");
        QTest::addColumn<QByteArray>("query");
        QTest::newRow("default") << 7U << QByteArray();
        QTest::newRow("fortnight") << 14U << QByteArray("period=14");
    }

    void OfflineQueryIsSignedAndSent()
    {
        QFETCH(quint32, period);
        QFETCH(QByteArray, query);
        char text[kQuerySize];
        QCOMPARE(FormatPgnssReqStr(text, sizeof(text), period), 0);
        QCOMPARE(QByteArray(text), query);
        QCOMPARE(PgnssUrlQuery(period).toUtf8(), query.isEmpty() ? query : '?' + query);
        char auth[kAuthSize];
        QCOMPARE(GenAuthStr(auth, sizeof(auth), SampleServer(), SampleAuth(), text), 0);
        QCOMPARE(QByteArray(auth),
                 AuthLine("GET&/lumat/v1/xgnss/pgnss&" + query + "&&appid=qfixdemo1&timestamp=1742508000123"));
        const LogCatcher log;
        char request[kRequestSize];
        QCOMPARE(GenHttpRequest(request, sizeof(request), SampleServer(), text, auth), 0);
        const QByteArray expected = "GET /lumat/v1/xgnss/pgnss?" + query +
                                    " HTTP/1.1\r\nHOST: assist.example.com\r\n" + QByteArray(auth) + "\r\n";
        QCOMPARE(QByteArray(request), expected);
        QCOMPARE(log.Lines(), QStringList{"Request:\r\n" + QString(expected)});
    }

    void OnlineQueryIsSignedAndSent_data()
    {
        QTest::addColumn<quint32>("constellation");
        QTest::addColumn<quint32>("datatype");
        QTest::addColumn<QByteArray>("query");
        QTest::newRow("all") << 15U << 31U << QByteArray();
        QTest::newRow("constellations") << 5U << 31U << QByteArray("constellation=5");
        QTest::newRow("types") << 15U << 3U << QByteArray("datatype=3");
        QTest::newRow("both") << 5U << 3U << QByteArray("constellation=5&datatype=3");
    }

    void OnlineQueryIsSignedAndSent()
    {
        QFETCH(quint32, constellation);
        QFETCH(quint32, datatype);
        QFETCH(QByteArray, query);
        char text[kQuerySize];
        QCOMPARE(FormatAgnssReqStr(text, sizeof(text), {constellation, datatype}), 0);
        QCOMPARE(QByteArray(text), query);
        QCOMPARE(AgnssUrlQuery({constellation, datatype}).toUtf8(), query.isEmpty() ? query : '?' + query);
    }

    void WhatDoesNotFitIsToldByItsCode()
    {
        const LogCatcher log;
        char buffer[kRequestSize];
        QCOMPARE(FormatPgnssReqStr(buffer, 9, 14), 1004);
        QCOMPARE(FormatAgnssReqStr(buffer, 20, {5, 3}), 1004);
        // 127 characters are signed, 128 are not.
        const QByteArray rest = "GET&&&&appid=qfixdemo1&timestamp=1742508000123";
        const QByteArray path(127 - rest.size(), 'p');
        QCOMPARE(GenAuthStr(buffer, kAuthSize, SampleServer(path), SampleAuth(), ""), 0);
        QCOMPARE(GenAuthStr(buffer, kAuthSize, SampleServer(path + 'p'), SampleAuth(), ""), 1005);
        QCOMPARE(GenAuthStr(buffer, 44, SampleServer(), SampleAuth(), ""), 1007);
        QCOMPARE(GenAuthStr(buffer, 45, SampleServer(), SampleAuth(), ""), 1007);
        QCOMPARE(GenHttpRequest(buffer, 60, SampleServer(), "", "signature"), 1007);
        QCOMPARE(log.Lines(), (QStringList{"FormatPgnssReqStr: join period failed: -1",
                                           "GenAuthStr: join raw str failed", "GenAuthStr: signLen too long 44",
                                           "GenAuthStr: sprintf_s fail", "GenHttpRequest: sprintf_s fail"}));
    }

    void TimestampIsOffByTheZonesDifference()
    {
        constexpr qint64 seconds = 1742508000;
        SetZone("Asia/Shanghai");
        QCOMPARE(AssistTimestamp(QDateTime::fromSecsSinceEpoch(seconds)), seconds * 1000);
        SetZone("UTC");
        QCOMPARE(AssistTimestamp(QDateTime::fromSecsSinceEpoch(seconds)), (seconds - 28800) * 1000);
        SetZone("America/New_York");
        QCOMPARE(AssistTimestamp(QDateTime::fromSecsSinceEpoch(seconds)), (seconds - 28800 - 18000) * 1000);
    }

    void ParametersAreJudged()
    {
        QVERIFY(IsValidPeriod(28) && IsValidPeriod(1) && !IsValidPeriod(2) && !IsValidPeriod(0));
        QVERIFY(IsValid({1, 1}) && IsValid({31, 31}));
        QVERIFY(!IsValid({0, 31}) && !IsValid({15, 0}) && !IsValid({32, 31}));
    }

    void TextsAreReadAsAPosition_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("check"); ///< as longitude
        QTest::addColumn<double>("value");
        const int text = static_cast<int>(PositionCheck::LongitudeText);
        const int range = static_cast<int>(PositionCheck::LongitudeRange);
        QTest::newRow("exponent") << "1e2" << 0 << 100.0;
        QTest::newRow("any character") << "12x5" << 0 << 0.0;
        QTest::newRow("two signs") << "--5" << 0 << 0.0;
        QTest::newRow("minus zero") << "-0" << 0 << -0.0;
        QTest::newRow("edge") << "-180" << 0 << -180.0;
        QTest::newRow("beyond") << "180.000001" << range << 180.000001;
        QTest::newRow("infinite") << "1e999" << range << qInf();
        QTest::newRow("empty") << "" << text << 0.0;
        QTest::newRow("no digit at the end") << "12." << text << 0.0;
        QTest::newRow("hint") << "dd.dddddd" << text << 0.0;
        QTest::newRow("full width") << "１２" << text << 0.0;
    }

    void TextsAreReadAsAPosition()
    {
        QFETCH(QString, text);
        QFETCH(int, check);
        QFETCH(double, value);
        ReferencePosition position;
        QCOMPARE(static_cast<int>(ReadPosition(text, "0", "0", position)), check);
        QCOMPARE(position.longitude, value);
    }

    void PositionIsCheckedInOrder()
    {
        ReferencePosition position;
        QCOMPARE(ReadPosition("x", "x", "x", position), PositionCheck::LongitudeText);
        QCOMPARE(ReadPosition("-181", "x", "x", position), PositionCheck::LongitudeRange);
        QCOMPARE(ReadPosition("0", "xy", "x", position), PositionCheck::LatitudeText);
        QCOMPARE(ReadPosition("0", "-90.1", "x", position), PositionCheck::LatitudeRange);
        QCOMPARE(ReadPosition("0", "90", "mm.mmm", position), PositionCheck::AltitudeText);
        QCOMPARE(ReadPosition("0", "90", "1e999", position), PositionCheck::Good);
    }

    void PositionRecordHasItsBytes_data()
    {
        QTest::addColumn<double>("longitude");
        QTest::addColumn<double>("latitude");
        QTest::addColumn<double>("altitude");
        QTest::addColumn<QByteArray>("bytes");
        const QByteArray one = "01000000";
        QTest::newRow("corner") << 180.0 << -90.0 << -12.9
                                << "00008000" + QByteArray("00008000") + one + "0c00010100000000";
        QTest::newRow("other corner") << -180.0 << 90.0 << 65536.0
                                      << "00008000" + QByteArray("000080ff") + one + "0000000000000000";
        QTest::newRow("rounding") << 0.0 << -1e-9 << -1e-7
                                  << "00000000" + QByteArray("00000000") + one + "0000000100000000";
        QTest::newRow("endless height")
            << 0.0 << 0.0 << -qInf() << "00000000" + QByteArray("00000000") + one + "0000000100000000";
        QTest::newRow("place") << 116.3 << 39.9 << 44.0
                               << "25bf3800" + QByteArray("c4b35200") + one + "2c00000000000000";
    }

    void PositionRecordHasItsBytes()
    {
        QFETCH(double, longitude);
        QFETCH(double, latitude);
        QFETCH(double, altitude);
        QFETCH(QByteArray, bytes);
        QCOMPARE(ReferencePositionRecord({longitude, latitude, altitude}).toHex(), bytes);
    }

    void OtherRecordsHaveTheirBytes()
    {
        // 2025-03-21 06:00:00 UTC: week 2358, Friday.
        QCOMPARE(ReferenceTimeRecord(1742536800).toHex(),
                 QByteArray("3601") + "e0eb0600" + "53000000" + "01000000");
        // Before the epoch the seconds wrap in 32 bits.
        QCOMPARE(ReferenceTimeRecord(0).toHex(), QByteArray("b301") + "005b0000" + "53000000" + "01000000");
        QCOMPARE(ScenePositionRecord(116.5, -39.25).toHex(),
                 QByteArray("0000000000205d40") + "0000000000a043c0" + "0a000000" + "00");
    }

    void BodyIsWalkedRecordByRecord()
    {
        const QByteArray two = Record(2, "eph") + Record(66, QByteArray());
        QCOMPARE(Walked(two), qMakePair(QList<int>{2, 66}, AgnssWalk::Step::End));
        QCOMPARE(Walked(two + "abcd"), qMakePair(QList<int>{2, 66}, AgnssWalk::Step::End));
        QCOMPARE(Walked("abcd"), qMakePair(QList<int>(), AgnssWalk::Step::End));
        QCOMPARE(Walked(two + "abcde"), qMakePair(QList<int>{2, 66}, AgnssWalk::Step::Broken));
        for (int length = 5; length < two.size(); ++length) {
            const auto walked = Walked(two.left(length));
            QCOMPARE(walked.first.size(), length < 8 ? 0 : 1);
            QCOMPARE(walked.second == AgnssWalk::Step::Broken, length < 8 || length - 8 >= 5);
        }
        for (int byte = 0; byte < 8; ++byte) {
            QByteArray broken = two;
            broken[byte] = static_cast<char>(broken[byte] + 1);
            QCOMPARE(Walked(broken), qMakePair(QList<int>(), AgnssWalk::Step::Broken));
        }
    }

    void ChecksumCountWrapsInSixteenBits()
    {
        for (const int length : {0xFFFB, 0xFFFC, 0xFFFD, 0xFFFF}) {
            QByteArray body = QByteArray::fromHex("0200") + static_cast<char>(length & 0xFF) +
                              static_cast<char>(length >> 8) + QByteArray(length, 'x');
            const int summed = (length + 4) & 0xFFFF;
            quint8 sum = 0;
            for (int i = 0; i < summed; ++i) {
                sum = static_cast<quint8>(sum + static_cast<quint8>(body.at(i)));
            }
            body += static_cast<char>(sum);
            QCOMPARE(Walked(body), qMakePair(QList<int>{2}, AgnssWalk::Step::End));
            QCOMPARE(Walked(body.left(body.size() - 1)).second, AgnssWalk::Step::Broken);
        }
    }

    void TagsNameTheirCommand()
    {
        QCOMPARE(gnss::FindAgnssTag(6)->commandId, gnss::CmdAgnssChannels);
        QCOMPARE(gnss::FindAgnssTag(34)->column, 0);
        QCOMPARE(gnss::FindAgnssTag(67)->commandId, gnss::CmdAgnssUtcParameters);
        QCOMPARE(gnss::FindAgnssTag(100)->commandId, gnss::CmdAgnssIonosphere);
        QCOMPARE(gnss::FindAgnssTag(100)->column, 2);
        for (const int tag : {0, 7, 32, 39, 64, 96, 103, 128, 0x0102}) {
            QVERIFY(gnss::FindAgnssTag(static_cast<quint16>(tag)) == nullptr);
        }
    }

    void SeedMustLastAnHour()
    {
        QVERIFY(SeedCovers(1000, 4600, 1000));
        QVERIFY(!SeedCovers(1000, 4599, 1000));
        QVERIFY(!SeedCovers(1001, 9000, 1000));
        QVERIFY(SeedCovers(0, 0xFFFFFFFF, 0xFFFFFFFFLL - 3600));
        QVERIFY(!SeedCovers(0, 0xFFFFFFFF, 0xFFFFFFFFLL - 3599));
    }

    void LabelsOfASeed()
    {
        QCOMPARE(SeedSizeText(1023), QString("1023B"));
        QCOMPARE(SeedSizeText(2047), QString("1KB"));
        SetZone("Asia/Shanghai");
        QCOMPARE(SeedSpanText(1742508000, 1742508000 + 3600 * 12 + 65),
                 QString("2025/3/21 6:0:0 - 2025/3/21 18:1:5"));
    }

    void CustomTimeIsLocal()
    {
        SetZone("Asia/Shanghai");
        QDateTime time;
        QVERIFY(ReadCustomTime("2025/03/21 06:00:00", time));
        QCOMPARE(time, QDateTime(QDate(2025, 3, 20), QTime(22, 0), Qt::UTC));
        for (const char* text : {"", "2025/3/21 06:00:00", "2025-03-21 06:00:00", "2025/02/30 06:00:00"}) {
            QVERIFY(!ReadCustomTime(text, time));
        }
        QCOMPARE(time.date(), QDate(2025, 3, 20));
    }

    void EphemerisIsTheLatestThatServes_data()
    {
        QTest::addColumn<QStringList>("names");
        QTest::addColumn<bool>("narrow");
        QTest::addColumn<qint64>("chosen");
        const QStringList spread = {"GPS_1742600901.eph", "GPS_1742607200.eph", "GPS_1742607201.eph",
                                    "GPS_1742599099.eph"};
        QTest::newRow("two hours ahead") << spread << false << qint64(1742607200);
        QTest::newRow("too far on both sides") << spread << true << qint64(0);
        QTest::newRow("just near enough")
            << QStringList{"GLO_1742599100.eph", "GLO_1742600900.eph"} << true << qint64(1742600900);
        QTest::newRow("a week old") << QStringList{"GPS_1741995200.eph"} << false << qint64(1741995200);
        QTest::newRow("no time") << QStringList{"GPS_1.eph", "GPS_.eph"} << false << qint64(0);
        QTest::newRow("beyond 32 bits") << QStringList{"GPS_9999999999.eph"} << false << qint64(0);
        QTest::newRow("none") << QStringList() << false << qint64(0);
    }

    void EphemerisIsTheLatestThatServes()
    {
        QFETCH(QStringList, names);
        QFETCH(bool, narrow);
        QFETCH(qint64, chosen);
        QCOMPARE(ChooseEphemeris(names, 1742600000, narrow), chosen);
    }

    void OnlyExpandedFilesAreDeleted()
    {
        const QTemporaryDir folder;
        const QDir dir(folder.path());
        for (const char* name :
             {"GPS_1.eph", "QZS_UTC.dat", "BDS_.x", "gps_1.eph", "GPS_1", "XGPS_1.eph", "EE.dat"}) {
            QFile file(dir.filePath(name));
            QVERIFY(file.open(QIODevice::WriteOnly));
        }
        QVERIFY(QFile::link("EE.dat", dir.filePath("GAL_1.eph")));
        QVERIFY(dir.mkdir("GLO_1.eph"));
        QVERIFY(DeleteExpandedFiles(folder.path()));
        QStringList left = dir.entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
        left.sort();
        QCOMPARE(left, (QStringList{"EE.dat", "GAL_1.eph", "GLO_1.eph", "GPS_1", "XGPS_1.eph", "gps_1.eph"}));
        QVERIFY(!DeleteExpandedFiles(dir.filePath("missing")));
        QVERIFY(!DeleteExpandedFiles(QString()));
    }

    void ScenesAreReadAsTexts()
    {
        QMap<int, SceneRecord> scenes;
        QVERIFY(ReadScenes(R"({"sence":[{"name":"a","longitude":"1.5","latitude":"2","altitude":"3",
            "utc_start":"u","unix_start_time":"1742508000"},{"name":7,"longitude":1.5},"text"]})",
                           scenes));
        QCOMPARE(scenes.size(), 3);
        QCOMPARE(scenes[0].altitude + scenes[0].utcStart + scenes[0].unixStart, QString("3u1742508000"));
        QVERIFY(scenes[1].name.isEmpty() && scenes[1].longitude.isEmpty() && scenes[2].name.isEmpty());
        for (const char* json : {"", "[]", "{\"sence\":{}}", "{\"scene\":[]}", "{\"sence\":[", "\xff"}) {
            QVERIFY(!ReadScenes(json, scenes));
        }
        QCOMPARE(scenes.size(), 3);
        QVERIFY(ReadScenes("{\"sence\":[]}", scenes));
        QVERIFY(scenes.isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestAssistRules)
#include "tst_assistrules.moc"
