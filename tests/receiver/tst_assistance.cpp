// SPDX-License-Identifier: MIT
#include "ReceiverDriver.h"

#include "assist/AssistRecords.h"
#include "protocol/AgnssTags.h"
#include "protocol/CommandTable.h"
#include "receiver/Assistance.h"
#include "seeds/Expansion.h"
#include "seeds/ModelSky.h"
#include "service/Replies.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>
#include <map>

namespace {

using protocol::AssistSystem;
using Item = std::pair<std::uint16_t, std::string>;
using Items = std::vector<Item>;

constexpr std::uint32_t kNow = 1773480413; // when the driver's receiver is switched on

std::string Text(const std::vector<std::uint8_t>& bytes)
{
    return std::string(bytes.begin(), bytes.end());
}

const seeds::Seed& Sky()
{
    static const seeds::Seed seed = seeds::MakeModelSeed(kNow, kNow - 7200, kNow + 86400);
    return seed;
}

std::string Ephemeris(AssistSystem system, std::uint32_t toe = kNow)
{
    return Text(protocol::MakeAssistEphemeris(system, kNow, seeds::OrbitsAt(Sky(), system, toe)));
}

template <typename Change> std::string ChangedGps(Change change)
{
    auto orbits = seeds::OrbitsAt(Sky(), AssistSystem::Gps, kNow);
    for (protocol::AssistOrbit& orbit : orbits) {
        change(orbit);
    }
    return Text(protocol::MakeAssistEphemeris(AssistSystem::Gps, kNow, orbits));
}

std::string UtcTime(std::uint32_t unixSeconds)
{
    return UtcTimeRecord(QDateTime::fromSecsSinceEpoch(unixSeconds, Qt::UTC)).toStdString();
}

/// The offline assistance's chain as the workbench sends it.
Items OfflineChain(std::uint32_t time)
{
    std::vector<seeds::OutputFile> files;
    seeds::ExpandSeed(Sky(), time, files);
    const std::string latest = std::to_string(time / 7200 * 7200 + 7200) + ".eph";
    const std::string nearest = std::to_string((time + 900) / 1800 * 1800) + ".eph";
    Items items = {{1028, UtcTime(time)}, {513, ReferenceTimeRecord(time).toStdString()}};
    for (const auto& [id, name] : Items{{515, "GPS_" + latest},
                                        {516, "GLO_" + nearest},
                                        {516, "BDS_" + latest},
                                        {516, "GAL_" + latest},
                                        {516, "QZS_" + latest},
                                        {517, "GPS_UTC.dat"},
                                        {520, "GPS_ION.dat"},
                                        {518, "GPS_RTI.dat"},
                                        {519, "GLO_RTI.dat"},
                                        {521, "GLO_AUX.dat"},
                                        {519, "BDS_RTI.dat"},
                                        {519, "GAL_RTI.dat"}}) {
        for (const seeds::OutputFile& file : files) {
            if (file.name == name) {
                items.push_back({id, Text(file.bytes)});
            }
        }
    }
    return items;
}

/// The online assistance's records, with the time in front.
Items OnlineRecords(std::uint32_t time)
{
    Items items = {{protocol::CmdUtcTime, UtcTime(time)}};
    for (const service::TaggedRecord& record : service::MakeRecords(15, 31, time * receiver::Millis{1000})) {
        items.push_back({protocol::FindAgnssTag(record.tag)->commandId, Text(record.payload)});
    }
    return items;
}

/// One good payload for every command that carries an item.
std::map<std::uint16_t, std::string> OneOfEach()
{
    std::map<std::uint16_t, std::string> each;
    for (const Items& items : {OfflineChain(kNow), OnlineRecords(kNow)}) {
        for (const Item& item : items) {
            if (protocol::FindAssistForm(item.first) != nullptr) {
                each.insert(item);
            }
        }
    }
    each[protocol::CmdPgnssFineIonosphere] =
        Text(protocol::MakeAssistGrid(kNow, seeds::MakeModelGrid(47, 8, kNow)));
    return each;
}

/// Seconds from a cold start to the first fix, with items injected behind it,
/// each 50 ms after the one before.
double ColdStart(const receiver::ReceiverOptions& options, const Items& items)
{
    ReceiverDriver driver(options);
    driver.Run(60000);
    const receiver::Millis began = driver.now;
    int refused = driver.Command(kColdStart);
    for (const Item& item : items) {
        driver.Run(50);
        refused |= driver.Command(item.first, item.second);
    }
    const double seconds = driver.SecondsToFix(120);
    return refused != 0 || seconds < 0.0 ? -1.0 : static_cast<double>(driver.now - began) / 1000.0;
}

std::size_t Ephemerides(const ReceiverDriver& driver)
{
    std::size_t count = 0;
    for (std::size_t i = 0; i < receiver::AllOrbits().size(); ++i) {
        const receiver::Memory& known = driver.receiver.Engine().Known();
        count += known.HasEphemeris(i, driver.receiver.UtcAt(driver.now)) ? 1 : 0;
    }
    return count;
}

} // namespace

class ReceiverAssistanceTest : public QObject {
    Q_OBJECT

private slots:
    void EveryItemIsUnderstood()
    {
        // The image that docs/receiver-link.md shows.
        const protocol::AssistUtc model{std::ldexp(1.0, -30), std::ldexp(1.0, -50), kNow - 1613, 18, 18};
        QCOMPARE(Text(protocol::MakeAssistUtc(AssistSystem::Gps, kNow, model)),
                 Hex("03000101dd29b56900000000000010 "
                     "3e000000000000d03c9023b569121200 00539bed2a"));
        ReceiverDriver driver(ReceiverDriver::Idle());
        const auto items = OneOfEach();
        QCOMPARE(items.size(), std::size(protocol::kAssistForms));
        for (const auto& [id, item] : items) {
            const QByteArray what = QByteArray::number(id);
            QVERIFY2(driver.Command(id, item) == 0, what);
            // Any byte that came over wrong is noticed.
            for (std::size_t i = 0; i < item.size(); i += 1 + item.size() / 60) {
                std::string spoilt = item;
                spoilt[i] = static_cast<char>(spoilt[i] ^ 0x40);
                QVERIFY2(driver.Command(id, spoilt) == 2, what);
            }
            QVERIFY2(driver.Command(id, item.substr(0, item.size() - 1)) > 0, what);
            // The item of another command is refused there.
            const protocol::AssistForm& form = *protocol::FindAssistForm(id);
            for (const auto& [otherId, theirs] : items) {
                const auto system = static_cast<AssistSystem>(theirs[1]);
                const bool fits = form.kind == protocol::FindAssistForm(otherId)->kind &&
                                  (form.systems & protocol::SystemBit(system)) != 0;
                QCOMPARE(driver.Command(id, theirs) == 0, fits);
            }
        }
    }

    void ValuesOutOfRange()
    {
        const auto byte = [](std::string payload, std::size_t at, char value) {
            payload[at] = value;
            protocol::ImageWriter image; // with a right check
            image.Raw(payload.data(), payload.size() - 4);
            image.Check();
            return Text(image.Bytes());
        };
        const std::string gps = Ephemeris(AssistSystem::Gps);
        protocol::AssistGrid grid = seeds::MakeModelGrid(47, 8, kNow);
        grid.latitudeStep = -1.0f;
        const Items rows = {
            {515, ChangedGps([](protocol::AssistOrbit& o) { o.number = 0; })},
            {515, ChangedGps([](protocol::AssistOrbit& o) { o.fit = 0; })},
            {515, ChangedGps([](protocol::AssistOrbit& o) { o.radius = std::nan(""); })},
            {515, ChangedGps([](protocol::AssistOrbit& o) { o.inclination = -0.1; })},
            {515, ChangedGps([](protocol::AssistOrbit& o) { o.node = 7.0; })},
            {515, byte(gps, 2, 2)}, // version, system and count
            {515, byte(gps, 1, 5)},
            {515, byte(gps, 3, 30)},
            {769, Text(protocol::MakeAssistTime(AssistSystem::Gps, kNow, {kNow, 1000, 0}))},
            {517, Text(protocol::MakeAssistUtc(AssistSystem::Gps, kNow, {std::nan(""), 0.0, kNow, 18, 18}))},
            {521, Text(protocol::MakeAssistChannels(AssistSystem::Glonass, kNow, {{1, 7, 1}}))},
            {522, Text(protocol::MakeAssistGrid(kNow, grid))}};
        for (std::size_t row = 0; row < rows.size(); ++row) {
            ReceiverDriver driver(ReceiverDriver::Idle());
            QVERIFY2(driver.Command(rows[row].first, rows[row].second) == 2, qPrintable(QString::number(row)));
        }
    }

    void TimeAndPlace()
    {
        const auto known = [](int id, const std::string& payload) {
            ReceiverDriver driver(ReceiverDriver::Idle());
            return driver.Command(id, payload) == 0 ? driver.receiver.Engine().Known() : receiver::Memory();
        };
        QVERIFY(known(1028, UtcTime(kNow)).timeKnown && !known(1028, UtcTime(kNow + 3601)).timeKnown);
        // Week 2409 without its highest bits, and the second in it.
        QVERIFY(known(513, Hex("6901dd6d08005300000001000000")).timeKnown);
        QVERIFY(!known(513, Hex("6801dd6d08005300000001000000")).timeKnown);
        QVERIFY(known(769, Text(protocol::MakeAssistTime(AssistSystem::Gps, kNow, {kNow, 0, 0}))).timeKnown);
        QVERIFY(
            !known(769, Text(protocol::MakeAssistTime(AssistSystem::Gps, kNow, {kNow + 3700, 0, 0}))).timeKnown);
        const receiver::Memory placed = known(770, Hex("f9684300ad130600010000009801000000000000"));
        QVERIFY(placed.positionKnown && std::abs(placed.position.latitude - 47.3977) < 2e-5 &&
                std::abs(placed.position.longitude - 8.5456) < 3e-5);
        QVERIFY(!known(770, Hex("f9684300ad130600010000009801010000000000")).positionKnown); // south
    }

    // Orbits that are whole but of no use are taken and change nothing.
    void WhatIsStaleOrFalseDoesNotHelp()
    {
        const auto shift = [](protocol::AssistOrbit& o) { o.argument = std::fmod(o.argument + 0.01, 6.28); };
        for (const Item& item :
             {Item{515, Ephemeris(AssistSystem::Gps, kNow - 7300)},
              Item{516, Ephemeris(AssistSystem::Glonass, kNow - 1900)}, Item{515, ChangedGps(shift)},
              Item{515, ChangedGps([](protocol::AssistOrbit& o) { o.health = 1; })}}) {
            ReceiverDriver driver(ReceiverDriver::Idle());
            QVERIFY(driver.Command(item.first, item.second) == 0 && Ephemerides(driver) == 0);
        }
        // A satellite that must not be used loses its ephemeris.
        ReceiverDriver driver(ReceiverDriver::Idle());
        QVERIFY(driver.Command(515, Ephemeris(AssistSystem::Gps)) == 0 && Ephemerides(driver) == 31);
        const std::string warning = Text(protocol::MakeAssistIntegrity(AssistSystem::Gps, kNow, {1}));
        QVERIFY(driver.Command(518, warning) == 0 && Ephemerides(driver) == 30);
    }

    void AssistanceShortensTheColdStart()
    {
        auto options = ReceiverDriver::Kept();
        const ReferencePosition place = {options.place.longitude, options.place.latitude, options.place.altitude};
        for (const Items& items : {OfflineChain(kNow + 60), OnlineRecords(kNow + 60)}) {
            Items withPosition = items;
            withPosition.push_back({770, ReferencePositionRecord(place).toStdString()});
            for (options.seed = 1; options.seed <= 10; ++options.seed) {
                const double cold = ColdStart(options, {});
                const double helped = ColdStart(options, items);
                const double placed = ColdStart(options, withPosition);
                QVERIFY2(cold > 15.0 && helped > 0.0 && helped < 7.5 && placed > 0.0 && placed < 5.0,
                         qPrintable(QString("%1 %2 %3").arg(cold).arg(helped).arg(placed)));
            }
        }
        // A cold start at every start forgets it.
        ReceiverDriver driver(ReceiverDriver::Kept());
        QCOMPARE(driver.Command(protocol::CmdStartMode, "\1"), 0);
        driver.SendBytes(kStop + kStart);
        QVERIFY(driver.SecondsToFix(60) > 15.0);
    }

    // The sample library makes a receiver at the scene's place and time start
    // hot.
    void SampleScenes()
    {
        const QString library = QStringLiteral(GNSS_SOURCE_DIR "/docs/scenes/");
        QFile json(library + "sence.json");
        QVERIFY(json.open(QIODevice::ReadOnly));
        const QJsonArray scenes = QJsonDocument::fromJson(json.readAll()).object().value("sence").toArray();
        QCOMPARE(scenes.size(), 3);
        for (const auto& each : scenes) {
            const QJsonObject scene = each.toObject();
            const auto number = [&](const char* name) { return scene.value(name).toString().toDouble(); };
            auto options = ReceiverDriver::Idle();
            options.utcAtPowerOn = static_cast<receiver::Millis>(number("unix_start_time")) * 1000;
            options.place = {number("latitude"), number("longitude"), number("altitude")};
            options.motion = receiver::Motion::Still(options.place);
            const QDateTime start = QDateTime::fromMSecsSinceEpoch(options.utcAtPowerOn, Qt::UTC);
            QCOMPARE(start.toString("yyyy-MM-dd hh:mm:ss"), scene.value("utc_start").toString());
            const auto file = [&](const char* name) {
                QFile content(library + scene.value("name").toString() + '/' + name);
                return content.open(QIODevice::ReadOnly) ? content.readAll().toStdString() : std::string();
            };
            ReceiverDriver driver(options);
            const std::uint32_t seconds = static_cast<std::uint32_t>(options.utcAtPowerOn / 1000);
            const QByteArray position = ScenePositionRecord(options.place.longitude, options.place.latitude);
            QCOMPARE(driver.Command(1028, UtcTime(seconds)), 0);
            QCOMPARE(driver.Command(514, position.toStdString()), 0);
            QCOMPARE(driver.Command(522, file("ION_CUT.bin")), 0);
            for (const char* system : {"GPS", "GLO", "BDS", "GAL", "QZSS"}) {
                const std::string orbits = file(qPrintable(QString(system) + "_PGNSS_REPLAY_FILE"));
                QCOMPARE(driver.Command(qstrcmp(system, "GPS") == 0 ? 515 : 516, orbits), 0);
            }
            driver.SendBytes(kStart);
            QVERIFY(driver.SecondsToFix(4) > 0.0);
            QCOMPARE(driver.receiver.Engine().Kind(), receiver::StartKind::Hot);
        }
    }
};

QTEST_GUILESS_MAIN(ReceiverAssistanceTest)
#include "tst_assistance.moc"
