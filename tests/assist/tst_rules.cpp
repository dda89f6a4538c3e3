// SPDX-License-Identifier: MIT
#include "assist/AgnssReply.h"
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

    void QueriesAreSignedAndSent()
    {
        char query[kQuerySize];
        QCOMPARE(FormatPgnssReqStr(query, sizeof(query), 7), 0);
        QCOMPARE(query + PgnssUrlQuery(7), QString());
        const struct {
            AgnssRequestPara para;
            QString query;
        } rows[] = {{{15, 31}, ""},
                    {{5, 31}, "constellation=5"},
                    {{15, 3}, "datatype=3"},
                    {{5, 3}, "constellation=5&datatype=3"}};
        for (const auto& row : rows) {
            QCOMPARE(FormatAgnssReqStr(query, sizeof(query), row.para), 0);
            QCOMPARE(QString(query), row.query);
            QCOMPARE(AgnssUrlQuery(row.para), row.query.isEmpty() ? row.query : '?' + row.query);
        }
        QCOMPARE(FormatPgnssReqStr(query, sizeof(query), 14), 0);
        QCOMPARE(PgnssUrlQuery(14), "?" + QString(query));

        for (const QByteArray& text : {QByteArray(query), QByteArray()}) {
            char auth[kAuthSize];
            QCOMPARE(GenAuthStr(auth, sizeof(auth), SampleServer(), SampleAuth(), text), 0);
            const QByteArray raw =
                "GET&/lumat/v1/xgnss/pgnss&" + text + "&&appid=qfixdemo1&timestamp=1742508000123";
            QCOMPARE(QByteArray(auth),
                     "HMAC-SHA256 appid=qfixdemo1,timestamp=1742508000123,signature=" +
                         QMessageAuthenticationCode::hash(raw, sampleKey, QCryptographicHash::Sha256).toBase64() +
                         "\r\n");
            const LogCatcher log;
            char request[kRequestSize];
            QCOMPARE(GenHttpRequest(request, sizeof(request), SampleServer(), text, auth), 0);
            QCOMPARE(QByteArray(request), "GET /lumat/v1/xgnss/pgnss?" + text +
                                              " HTTP/1.1\r\nHOST: assist.example.com\r\n" + QByteArray(auth) +
                                              "\r\n");
            QCOMPARE(log.Lines(), QStringList{"Request:\r\n" + QString(request)});
        }
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

    void TextsAreReadAsAPosition()
    {
        constexpr PositionCheck good = PositionCheck::Good;
        constexpr PositionCheck text = PositionCheck::LongitudeText;
        constexpr PositionCheck range = PositionCheck::LongitudeRange;
        const struct {
            QString text;
            PositionCheck check; ///< as longitude
            double value;
        } rows[] = {{"1e2", good, 100.0},     {"12x5", good, 0.0},  {"--5", good, 0.0},
                    {"-0", good, -0.0},       {"-180", good, -180}, {"180.000001", range, 180.000001},
                    {"1e999", range, qInf()}, {"", text, 0.0},      {"12.", text, 0.0},
                    {"１２", text, 0.0},      {"dd.ddd", text, 0.0}};
        for (const auto& row : rows) {
            ReferencePosition position;
            QCOMPARE(ReadPosition(row.text, "0", "0", position), row.check);
            QCOMPARE(position.longitude, row.value);
        }
        ReferencePosition position;
        QCOMPARE(ReadPosition("0", "90", "1e999", position), good);
    }

    void PositionRecordHasItsBytes()
    {
        const QByteArray one = "01000000";
        const struct {
            ReferencePosition position;
            QByteArray bytes;
        } rows[] = {
            {{180, -90, -12.9}, "00008000" + QByteArray("00008000") + one + "0c00010100000000"},
            {{-180, 90, 65536}, "00008000" + QByteArray("000080ff") + one + "0000000000000000"},
            {{0, -1e-9, -1e-7}, "00000000" + QByteArray("00000000") + one + "0000000100000000"},
            {{0, 0, -qInf()}, "00000000" + QByteArray("00000000") + one + "0000000100000000"},
            {{116.3, 39.9, 44}, "25bf3800" + QByteArray("c4b35200") + one + "2c00000000000000"},
        };
        for (const auto& row : rows) {
            QCOMPARE(ReferencePositionRecord(row.position).toHex(), row.bytes);
        }
    }

    void OtherRecordsHaveTheirBytes()
    {
        const QDateTime time(QDate(2026, 11, 22), QTime(21, 5, 59, 999), Qt::OffsetFromUTC, 3600);
        QCOMPARE(UtcTimeRecord(time).toHex(), QByteArray("ea070b1614053b00e7030100"));
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

    void SeedMustLastAnHour()
    {
        QVERIFY(SeedCovers(1000, 4600, 1000));
        QVERIFY(!SeedCovers(1000, 4599, 1000));
        QVERIFY(!SeedCovers(1001, 9000, 1000));
        QVERIFY(SeedCovers(0, 0xFFFFFFFF, 0xFFFFFFFFLL - 3600));
        QVERIFY(!SeedCovers(0, 0xFFFFFFFF, 0xFFFFFFFFLL - 3599));
    }

    void EphemerisIsTheLatestThatServes()
    {
        const QStringList spread = {"GPS_1742600901.eph", "GPS_1742607200.eph", "GPS_1742607201.eph",
                                    "GPS_1742599099.eph"};
        const struct {
            QStringList names;
            bool narrow;
            qint64 chosen;
        } rows[] = {
            {spread, false, 1742607200}, // two hours ahead
            {spread, true, 0},
            {{"GLO_1742599100.eph", "GLO_1742600900.eph"}, true, 1742600900},
            {{"GPS_1741995200.eph"}, false, 1741995200}, // a week old
            {{"GPS_1.eph", "GPS_.eph"}, false, 0},
            {{"GPS_9999999999.eph"}, false, 0}, // beyond 32 bits
            {{}, false, 0},
        };
        for (const auto& row : rows) {
            QCOMPARE(ChooseEphemeris(row.names, 1742600000, row.narrow), row.chosen);
        }
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
#include "tst_rules.moc"
