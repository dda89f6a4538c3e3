// SPDX-License-Identifier: MIT
#include "LinkDocument.h"
#include "Zeroed.h"

#include "protocol/AgnssTags.h"
#include "protocol/CommandFrames.h"
#include "protocol/CommandTable.h"
#include "protocol/Records.h"

#include <QMap>
#include <QtTest>

// docs/receiver-link.md is the published layout: what it shows must come from the values that stand here, and what
// is read out of it must be those values.

namespace {

using namespace protocol;

constexpr std::uint32_t kMade = 1773480413; // 2026-03-14 09:26:53

QByteArray Bytes(const std::vector<std::uint8_t>& bytes)
{
    return QByteArray(reinterpret_cast<const char*>(bytes.data()), int(bytes.size()));
}

/// A frame, which reads as what it was made of.
QByteArray Frame(int id, const QByteArray& payload, int word1 = 0, int word2 = 0)
{
    std::vector<std::uint8_t> out(kMaxFrameLength);
    out.resize(WriteFrame(out.data(), out.size(), std::uint16_t(id), std::uint16_t(word1), std::uint16_t(word2),
                          payload.constData(), std::size_t(payload.size())));
    FrameView read;
    const bool same = ReadFrame(out.data(), out.size(), read) && read.id == id && read.word1 == word1 &&
                      read.word2 == word2 &&
                      payload == QByteArray(reinterpret_cast<const char*>(read.payload), int(read.payloadLength));
    return same ? Bytes(out) : QByteArray("a frame that reads as another");
}

/// A record by its list, which reads as what it was made of.
template <typename Record, typename List> QByteArray Listed(const Record& record, const List& fields)
{
    const std::vector<std::uint8_t> bytes = Packed(record, fields);
    const auto read = Unpacked<Record>(bytes.data(), bytes.size(), fields);
    return Packed(read, fields) == bytes ? Bytes(bytes) : QByteArray("a record that reads as another");
}

template <typename Message> QByteArray Image(int type, const Zeroed<Message>& message)
{
    return Frame(0x8100 + type, message.Bytes());
}

template <typename Message> QByteArray Image(int type, const Message& message)
{
    return Frame(0x8100 + type, QByteArray(reinterpret_cast<const char*>(&message), sizeof message));
}

QMap<QString, QByteArray> Commands()
{
    const auto ready = [](ReadyFrame frame) {
        const ReadyFrameRow& row = RowOf(frame);
        return QByteArray(reinterpret_cast<const char*>(row.bytes), int(row.Size()));
    };
    const auto raw = [](const char* hex) { return QByteArray::fromHex(hex); };
    ConstellationSetting gpsAndGalileo;
    gpsAndGalileo.on = {{1, 0, 0, 1, 0}};
    NmeaSetting ggaAndRmc;
    ggaAndRmc.gga = 1;
    ggaAndRmc.rmc = 1;
    UtcTimeRecord utc{2026, 3, 14, 9, 26, 53, 589};
    ReferencePositionRecord zurich{4417785, 398253, 1, 408, 0, 0};
    ReferencePositionRecord sydney{3155682, 7047143, 1, 5, 1, 0};
    return {
        {"host AT", "AT+GNSSHEX=7e040e000900000000000100027e"},
        {"receiver AT", "+GNSSHEX:7e0411000180000000000400090000007e"},
        {" AT", QByteArray(kAtStart) + kAtStop +
                    "$GNGGA,092653.00,4723.86200,N,00832.73600,E,1,12,0.8,408.0,M,47.0,M,,*78"},
        {"host", Frame(9, raw("02"))},
        {"receiver", Frame(0x8001, Listed(CbRecvAckType{9, 0}, kAckFields))},
        {"start", ready(ReadyFrame::Start)},
        {"stop", ready(ReadyFrame::Stop)},
        {"probe", ready(ReadyFrame::Probe)},
        {"read history", ready(ReadyFrame::ReadHistory)},
        {"cold start", ready(ReadyFrame::ColdStart)},
        {"hot start", ready(ReadyFrame::HotStart)},
        {"NMEA mask", ready(ReadyFrame::NmeaMask)},
        {"1, start (numbers 1, 1, 1)", Frame(1, Listed(StartCommand{1, 1, 0, 1}, kStartFields))},
        {"2, stop", Frame(2, raw("00000000"))},
        {"3, GPS and Galileo only", Frame(3, Listed(gpsAndGalileo, kConstellationSettingFields))},
        {"4, cold at each start", Frame(4, QByteArray(1, char(StartCold)))},
        {"5, GGA and RMC only", Frame(5, Listed(ggaAndRmc, kNmeaSettingFields))},
        {"6, low power on", Frame(6, Listed(LowPowerSetting{LowPower::On}, kLowPowerFields))},
        {"7, low power off", Frame(7, Listed(LowPowerSetting{LowPower::Off}, kLowPowerFields))},
        {"8, periodic scan", Frame(8, Listed(AntiJamSetting{1, 1, 0}, kAntiJamFields))},
        {"9, 10 Hz", Frame(9, QByteArray(1, char(Rate10Hz)))},
        {"10, PPS of 20 ms", Frame(10, Listed(PpsSetting{1, 20}, kPpsFields))},
        {"11, measurements", Frame(11, Listed(ReportSetting{1, 0}, kReportFields))},
        {"12, TTFF first", Frame(12, QByteArray(1, char(PriorityTtff)))},
        {"257, a block of 4 bytes", Frame(257, raw("aabbccdd"))},
        {"258, history out", Frame(258, {}, 0, 1)},
        {"513, 2026-03-14 09:26:53", Frame(513, Listed(ReferenceTimeRecord{361, 552413}, kReferenceTimeFields))},
        {"514, 47.3977 N 8.5456 E",
         Frame(514, Listed(ScenePositionRecord{8.5456, 47.3977}, kScenePositionFields))},
        {"770, 47.3977 N 8.5456 E 408 m", Frame(770, Listed(zurich, kReferencePositionFields))},
        {"770, 33.8568 S 151.2153 E 5 m", Frame(770, Listed(sydney, kReferencePositionFields))},
        {"1028, 09:26:53.589", Frame(1028, Listed(utc, kUtcTimeFields))},
        {"wrong length", Frame(0x8001, Listed(CbRecvAckType{3, 1}, kAckFields))},
        {"wake me", Frame(0x8002, QByteArray(1, char(SleepWakeMe)))},
        {"part 0 of 2", Frame(0x8003, raw("a1a2a3"), 0, 2)},
        {"part 1 of 2", Frame(0x8003, raw("a4a5"), 1, 2)},
        {"both parts", Frame(257, raw("a1a2a3a4a5"))},
    };
}

QMap<QString, QByteArray> Items()
{
    using System = AssistSystem;
    const AssistOrbit fifth{5, 0, 7200, kMade, 26560000.0, 0.96, 1.5, 0.25};
    const AssistOrbit last{31, 1, 3600, 1773482400, 26559700.0, 0.95, -1.25, 3.5};
    const AssistUtc plain{0.0, 0.0, kMade, 18, 18};
    const AssistUtc model{9.3132257461547852e-10, 8.8817841970012523e-16, 1773478800, 18, 18};
    AssistUtc other = model;
    other.nextLeapSeconds = 19;
    const AssistIonosphere ionosphere{{{0.5F, 0.25F, -0.125F, -0.0625F}}, {{96.0F, -32.0F, -16.0F, 8.0F}}};
    AssistGrid square;
    square.rows = square.columns = 2;
    square.latitude = 40.0F;
    square.latitudeStep = square.longitudeStep = 10.0F;
    square.content = {100, 110, 120, 130};
    AssistGrid grid;
    grid.rows = 2;
    grid.columns = 3;
    grid.latitude = 40.0F;
    grid.longitude = 8.0F;
    grid.latitudeStep = 10.0F;
    grid.longitudeStep = 5.0F;
    grid.content = {100, 110, 120, 130, 140, 150};
    const auto channels = [](const std::vector<AssistChannel>& list) {
        return Bytes(MakeAssistChannels(System::Glonass, kMade, list));
    };
    const auto utc = [](System system, const AssistUtc& value) {
        return Bytes(MakeAssistUtc(system, kMade, value));
    };
    const auto integrity = [](System system, std::uint64_t unusable) {
        return Bytes(MakeAssistIntegrity(system, kMade, {unusable}));
    };
    const auto orbits = [](System system, const std::vector<AssistOrbit>& list) {
        return Bytes(MakeAssistEphemeris(system, kMade, list));
    };
    const auto time = [](System system, const AssistTime& value) {
        return Bytes(MakeAssistTime(system, kMade, value));
    };
    return {
        {"UTC model", utc(System::Gps, model)},
        {"769, GPS time", Frame(769, time(System::Gps, {kMade, 0, 10}))},
        {"775, BeiDou time", Frame(775, time(System::Beidou, {kMade, 0, 10}))},
        {"515 and 771, GPS 5", Frame(515, orbits(System::Gps, {fifth}))},
        {"516 and 777, Galileo 5", Frame(516, orbits(System::Galileo, {fifth}))},
        {"517 and 773, GPS", Frame(517, utc(System::Gps, plain))},
        {"779, Galileo", Frame(779, utc(System::Galileo, plain))},
        {"518 and 774, not GPS 5", Frame(518, integrity(System::Gps, 16))},
        {"519 and 778, not BeiDou 5", Frame(519, integrity(System::Beidou, 16))},
        {"520 and 772, GPS", Frame(520, Bytes(MakeAssistIonosphere(System::Gps, kMade, {})))},
        {"776, BeiDou", Frame(776, Bytes(MakeAssistIonosphere(System::Beidou, kMade, {})))},
        {"521 and 780, GLONASS 1", Frame(521, channels({{1, 1, 3}}))},
        {"522, 2 by 2 points", Frame(522, Bytes(MakeAssistGrid(kMade, square)))},
        {"769, time of every field", time(System::Gps, {1773480000, 250, 12})},
        {"515, two satellites", orbits(System::Gps, {fifth, last})},
        {"517, UTC of every field", utc(System::Gps, other)},
        {"520, ionosphere of every field", Bytes(MakeAssistIonosphere(System::Gps, kMade, ionosphere))},
        {"519, not BeiDou 1 and 63", integrity(System::Beidou, 0x4000000000000001)},
        {"521, GLONASS 7 on channel -4", channels({{7, -4, 3}, {24, 6, 1}})},
        {"522, 2 by 3 points", Bytes(MakeAssistGrid(kMade, grid))},
    };
}

/// Positions by name, so that the bytes tell the place of each field.
QMap<QString, QByteArray> Positions()
{
    Zeroed<MsgGga> gga;
    gga->valid = 1;
    gga->utcTime = 92653.5;
    gga->latitude = 4723.862;
    gga->latDirection = 'N';
    gga->longitude = 832.736;
    gga->lonDirection = 'E';
    gga->mode = FixRtkFixed;
    gga->svNumInUse = 12;
    gga->hdop = 0.75F;
    gga->altitude = 408.25;
    gga->altitudeUnits = 'M';
    Zeroed<MsgRmc> rmc;
    rmc->valid = 1;
    rmc->utcTime = 92653.5;
    rmc->posStatus = 'A';
    rmc->latitude = 4723.862;
    rmc->latDirection = 'N';
    rmc->longitude = 832.736;
    rmc->lonDirection = 'E';
    rmc->knotSpd = 2.5F;
    rmc->course = 84.25F;
    rmc->date = 140326;
    rmc->magDec = 1.5F;
    rmc->magDecDir = 'W';
    rmc->mode = 'D';
    Zeroed<MsgGll> gll;
    gll->valid = 1;
    gll->latitude = 4723.862;
    gll->latDirection = 'N';
    gll->longitude = 832.736;
    gll->lonDirection = 'E';
    gll->utcTime = 92653.5;
    gll->status = 'A';
    Zeroed<MsgVtg> vtg;
    vtg->valid = 1;
    vtg->trueCourse = 84.25F;
    vtg->magCourse = 82.75F;
    vtg->knotSpd = 2.5F;
    vtg->kmSpeed = 4.625F;
    vtg->mode = 'A';
    Zeroed<MsgZda> zda;
    zda->valid = 1;
    zda->utcTime = 92653.5;
    zda->date = 140326;
    zda->hourBias = -8;
    zda->minBias = 30;
    Zeroed<MsgLoc> loc;
    loc->validMask = 15;
    loc->timestamp = 1457515631500;
    loc->latitude = 47.3977;
    loc->longitude = 8.5456;
    loc->clkBias = -150000.5;
    loc->clkDrift = 0.25;
    loc->speede = 1.5;
    loc->speedn = -2.5;
    loc->speedu = 0.125;
    loc->altitude = 408.25F;
    loc->heading = 149.0F;
    loc->posAcc = 2.75F;
    loc->speedAcc = 0.5F;
    return {{"GGA", Image(0, gga)},  {"GGA without padding", Frame(0x8100, gga.Bytes().left(57))},
            {"RMC", Image(1, rmc)},  {"GLL", Image(4, gll)},
            {"VTG", Image(5, vtg)},  {"ZDA", Image(6, zda)},
            {"Loc", Image(100, loc)}};
}

QMap<QString, QByteArray> Lists()
{
    // The blocks: GPS, BeiDou, Galileo, GLONASS, QZSS.
    Zeroed<MsgGsv> gsv;
    gsv->block[0].gsvNum = 3;
    gsv->block[0].gsvNo = 2;
    gsv->block[0].satellitesNum = 9;
    gsv->block[0].row[0] = {5, 40, 83, 46, 1};
    gsv->block[0].row[1] = {6, 41, 84, 47, 8};
    gsv->block[1].gsvNum = gsv->block[1].gsvNo = 1;
    gsv->block[1].satellitesNum = 2;
    gsv->block[1].row[0] = {8, 9, 30, 39, 5};
    gsv->block[2].gsvNum = 4;
    gsv->block[3].gsvNum = 6;
    gsv->block[4].gsvNum = 7;
    gsv->block[4].gsvNo = 1;
    gsv->block[4].satellitesNum = 36;
    gsv->block[4].row[35].prn = 194;
    gsv->block[4].row[35].elev = 70;
    gsv->block[4].row[35].azim = 120;
    gsv->block[4].row[35].cn0 = 38;
    gsv->block[4].row[35].freq = 8;
    Zeroed<MsgGsa> gsa;
    gsa->block[0] = {1, 'A', 3, 12, {2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13}, 1.5F, 0.75F, 1.25F};
    for (std::uint8_t i = 1; i < 5; ++i) {
        gsa->block[i].valid = std::uint8_t(i + 1);
        gsa->block[i].optMode = i % 2 == 1 ? 'M' : 'A';
    }
    gsa->block[1].posMode = 2;
    gsa->block[4].optMode = 'A';
    gsa->block[4].posMode = gsa->block[4].validPrnNum = 1;
    gsa->block[4].prn[0] = 194;
    gsa->block[4].pdop = 2.5F;
    gsa->block[4].hdop = 2.0F;
    gsa->block[4].vdop = 1.75F;
    Zeroed<MsgMeas> meas;
    MeasEntry& first = meas->entry[0];
    first.svid = 5;
    first.constellation = std::uint8_t(Constellation::Galileo);
    first.cn0 = 44;
    first.inuseFlag = 1;
    first.satFlag = 2;
    first.carrierFreq = 1575.42;
    first.psr = 22000000.5;
    first.doppler = -1250.25;
    first.carrierPhase = 115000000.75;
    first.satPosX = 15600000.0;
    first.satPosY = -8200000.0;
    first.satPosZ = 20100000.0;
    first.satSpeedX = 1200.5;
    first.satSpeedY = -2400.5;
    first.satSpeedZ = 300.25;
    MeasEntry& last = meas->entry[49];
    last.svid = 7;
    last.constellation = std::uint8_t(Constellation::Beidou);
    last.cn0 = 31;
    last.satFlag = 1;
    last.carrierFreq = 1561.098;
    Zeroed<MsgPdrMeas> pdr;
    pdr->entry[0].svid = 5;
    pdr->entry[0].gnssType = std::uint8_t(Constellation::Galileo);
    pdr->entry[0].inuseFlag = 1;
    pdr->entry[0].shape = 2;
    pdr->entry[0].psrNs = 73400.5F;
    pdr->entry[49].svid = 7;
    pdr->entry[49].gnssType = std::uint8_t(Constellation::Beidou);
    pdr->entry[49].shape = 1;
    return {
        {"GSV", Image(2, gsv)}, {"GSA", Image(3, gsa)}, {"Meas", Image(101, meas)}, {"PdrMeas", Image(104, pdr)}};
}

QMap<QString, QByteArray> OtherMessages()
{
    Zeroed<MsgPdrComm> comm;
    comm->deltaTime = 1.0;
    comm->context = 2;
    comm->isStatic = 1;
    comm->pvtState = 3;
    comm->inuseNum = 11;
    comm->qop = 2.75F;
    comm->hdop = 0.75F;
    comm->ems = 7.5F;
    Zeroed<MsgPdrLs> ls;
    ls->latitude = 47.3977;
    ls->longitude = 8.5456;
    ls->speede = 1.5;
    ls->speedn = -2.5;
    ls->speedu = 0.125;
    ls->altitude = 408.25F;
    ls->qop = 2.75F;
    ls->hdop = 0.75F;
    ls->ems = 7.5F;
    ls->inuseNum = 11;
    ls->isLsFix = 1;
    ls->isRaimSucc = 2;
    Zeroed<MsgFtmCn0> ftm;
    ftm->testStatus = 1;
    ftm->satCn0 = 420;
    ftm->freqBias = -12;
    ftm->freqDrift = 3;
    return {{"PdrComm", Image(103, comm)},
            {"PdrLs", Image(105, ls)},
            {"PpsSts", Image(106, MsgPpsSts{1})},
            {"FixMode", Image(107, MsgFixMode{0x1F})},
            {"NmeaMode", Image(108, MsgNmeaMode{0xFF})},
            {"Tsensor, -5 degrees", Image(109, MsgTsensor{-5})},
            {"FtmCn0", Image(110, ftm)}};
}

/// An assistance item made again out of what is read from it; what else is in it shows.
QByteArray MadeAgain(const QByteArray& payload)
{
    AssistHeader header;
    ImageReader body(nullptr, 0);
    if (!ReadAssistHeader(reinterpret_cast<const std::uint8_t*>(payload.constData()), std::size_t(payload.size()),
                          header, body)) {
        return {};
    }
    AssistTime time;
    AssistUtc utc;
    AssistIonosphere ionosphere;
    AssistIntegrity integrity;
    AssistGrid grid;
    std::vector<AssistOrbit> orbits;
    std::vector<AssistChannel> channels;
    const auto when = header.issued;
    switch (header.kind) {
    case AssistKind::Time:
        return ReadAssistTime(body, time) ? Bytes(MakeAssistTime(header.system, when, time)) : QByteArray();
    case AssistKind::Ephemeris:
        return ReadAssistEphemeris(header, body, orbits) ? Bytes(MakeAssistEphemeris(header.system, when, orbits))
                                                         : QByteArray();
    case AssistKind::Utc:
        return ReadAssistUtc(body, utc) ? Bytes(MakeAssistUtc(header.system, when, utc)) : QByteArray();
    case AssistKind::Ionosphere:
        return ReadAssistIonosphere(body, ionosphere)
                   ? Bytes(MakeAssistIonosphere(header.system, when, ionosphere))
                   : QByteArray();
    case AssistKind::Integrity:
        return ReadAssistIntegrity(body, integrity) ? Bytes(MakeAssistIntegrity(header.system, when, integrity))
                                                    : QByteArray();
    case AssistKind::Channels:
        return ReadAssistChannels(header, body, channels)
                   ? Bytes(MakeAssistChannels(header.system, when, channels))
                   : QByteArray();
    case AssistKind::FineIonosphere:
        return ReadAssistGrid(body, grid) ? Bytes(MakeAssistGrid(when, grid)) : QByteArray();
    }
    return {};
}

} // namespace

class LinkDocumentTest : public QObject {
    Q_OBJECT

private slots:
    void EveryExampleIsWhatItsValuesGive()
    {
        QMap<QString, QByteArray> expected = Commands();
        for (const auto& group : {Items(), Positions(), Lists(), OtherMessages()}) {
            for (auto each = group.begin(); each != group.end(); ++each) {
                QVERIFY2(!expected.contains(each.key()), qPrintable(each.key()));
                expected.insert(each.key(), each.value());
            }
        }
        const auto examples = ExamplesOf(GNSS_SOURCE_DIR "/docs/receiver-link.md");
        QMap<QString, QByteArray> shown;
        for (const DocumentExample& example : examples) {
            shown[example.label] += example.bytes;
        }
        for (const DocumentExample& example : examples) {
            const QByteArray bytes = expected.value(example.label);
            const QString told =
                QString("line %1, \"%2\": %3 instead of %4")
                    .arg(QString::number(example.line), example.label, QString(shown[example.label].toHex(' ')),
                         expected.contains(example.label) ? QString(bytes.toHex(' ')) : QString("nothing known"));
            QVERIFY2(!example.label.isEmpty() && shown[example.label] == bytes, qPrintable(told));
        }
        for (const QString& label : expected.keys()) {
            QVERIFY2(shown.contains(label), qPrintable("the document does not show " + label));
        }
    }

    void ItemsReadAsTheyWereMade()
    {
        const auto items = Items();
        for (auto each = items.begin(); each != items.end(); ++each) {
            const bool framed = each.value().startsWith('\x7e');
            const QByteArray payload = framed ? each.value().mid(12).chopped(1) : each.value();
            QVERIFY2(MadeAgain(payload) == payload, qPrintable(each.key()));
        }
    }

    void EachFlagHasItsPlace()
    {
        std::uint8_t NmeaSetting::*const sentences[] = {&NmeaSetting::gga, &NmeaSetting::gll, &NmeaSetting::gsa,
                                                        &NmeaSetting::gsv, &NmeaSetting::rmc, &NmeaSetting::vtg,
                                                        &NmeaSetting::zda, &NmeaSetting::pn};
        for (int i = 0; i < 8; ++i) {
            NmeaSetting setting;
            setting.*sentences[i] = 1;
            QByteArray expected(8, '\0');
            expected[i] = 1;
            QCOMPARE(Listed(setting, kNmeaSettingFields), expected);
        }
        QCOMPARE(Listed(AntiJamSetting{1, 2, 3}, kAntiJamFields), QByteArray("\1\2\3"));
        QCOMPARE(Listed(StartItem{1, 2, 3}, kStartItemFields), QByteArray::fromHex("0100020003"));
        QCOMPARE(Listed(NmeaMaskItem{1, 2, 3, 4}, kNmeaMaskFields), QByteArray::fromHex("010002000304"));
        QCOMPARE(Listed(StartCommand{1, 2, 3, 4}, kStartFields), QByteArray::fromHex("010000000200030004000000"));
        QCOMPARE(QByteArray("\0\1", 2), QByteArray(1, char(StartAutomatic)) + char(StartCold));
        QCOMPARE(QByteArray("\0\1\2", 3), QByteArray(1, char(Rate1Hz)) + char(Rate5Hz) + char(Rate10Hz));
        QCOMPARE(QByteArray("\0\1\2", 3),
                 QByteArray(1, char(PriorityAutomatic)) + char(PriorityTtff) + char(PriorityAccuracy));
    }

    void CommandsAcceptTheirLengths()
    {
        struct Accepted {
            QVector<int> ids;
            int word1;
            QVector<QPair<int, int>> lengths;
        };
        const Accepted rows[] = {
            {{1}, 0, {{12, 12}}},
            {{1}, 3, {{12, 12}}},
            {{2}, 0, {{0, 0}, {4, 4}}},
            {{3}, 0, {{5, 5}}},
            {{3}, 2, {{5, 5}}},
            {{3}, 3, {{5, 5}}},
            {{3}, 0x0104, {{6, 6}}},
            {{4, 9, 12}, 0, {{1, 1}}},
            {{5}, 0, {{1, 1}, {8, 8}}},
            {{6, 7, 10, 11}, 0, {{2, 2}}},
            {{8}, 0, {{3, 3}}},
            {{257}, 0, {{1, 7400}}},
            {{258}, 0, {{0, 0}}},
            {{513}, 0, {{14, 14}}},
            {{514}, 0, {{21, 21}}},
            {{515, 516, 771, 777}, 0, {{52, 2572}}},
            {{517, 773, 779}, 0, {{36, 36}}},
            {{518, 519, 774, 778}, 0, {{20, 20}}},
            {{520, 772, 776}, 0, {{44, 44}}},
            {{521, 780}, 0, {{16, 268}}},
            {{522}, 0, {{40, 2080}}},
            {{769, 775}, 0, {{20, 20}}},
            {{770}, 0, {{20, 20}}},
            {{1028}, 0, {{12, 12}}},
        };
        QSet<QPair<int, int>> known;
        for (const Accepted& row : rows) {
            for (const int id : row.ids) {
                known.insert({id, row.word1});
                for (int length = 0; length < 7500; ++length) {
                    bool good = false;
                    for (const auto& range : row.lengths) {
                        good = good || (length >= range.first && length <= range.second);
                    }
                    const CommandCheck check =
                        CheckCommand(std::uint16_t(id), std::uint16_t(row.word1), std::size_t(length));
                    QVERIFY2(check == (good ? CommandCheck::Accepted : CommandCheck::BadLength),
                             qPrintable(QString("%1 with %2 bytes").arg(id).arg(length)));
                }
            }
        }
        for (int id = 0; id < 1200; ++id) {
            for (const int word1 : {0, 1, 2, 3, 0x0104}) {
                QCOMPARE(CheckCommand(std::uint16_t(id), std::uint16_t(word1), 5) == CommandCheck::Unknown,
                         !known.contains({id, word1}));
            }
            const CommandForm* form = FindCommand(std::uint32_t(id));
            QVERIFY(form == nullptr || form->word2 == (id == 258 ? 1 : 0));
        }
    }

    void MessagesHaveTheLengthsOfTheDocument()
    {
        static const QRegularExpression row(
            "^\\| 0x(81[0-9a-f]{2}) \\| (\\d+) \\| (\\w+) \\| (\\d+)(?: \\((\\d+)\\))? \\|$");
        QFile file(GNSS_SOURCE_DIR "/docs/receiver-link.md");
        QVERIFY(file.open(QIODevice::ReadOnly));
        std::size_t rows = 0;
        for (const QString& line : QString::fromUtf8(file.readAll()).split('\n')) {
            const QRegularExpressionMatch match = row.match(line);
            if (!match.hasMatch()) {
                continue;
            }
            ++rows;
            const MessageLayout* layout = FindMessageLayout(match.captured(2).toUInt());
            QVERIFY2(layout != nullptr, qPrintable(line));
            QCOMPARE(match.captured(1).toUInt(nullptr, 16), 0x8100U + layout->msgType);
            QCOMPARE(QString(layout->name), match.captured(3));
            QCOMPARE(int(layout->fullPayload), match.captured(4).toInt());
            QCOMPARE(int(layout->minPayload),
                     (match.captured(5).isEmpty() ? match.captured(4) : match.captured(5)).toInt());
        }
        QCOMPARE(rows, std::size(kMessageLayouts));
        QCOMPARE(rows, std::size_t(17));
    }
};

QTEST_GUILESS_MAIN(LinkDocumentTest)
#include "tst_linkdocument.moc"
