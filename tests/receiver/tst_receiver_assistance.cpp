#include "ReceiverDriver.h"

#include "assist/AssistRecords.h"
#include "codec/AgnssTags.h"
#include "codec/CommandTable.h"
#include "pgnss/Expansion.h"
#include "pgnss/ModelSky.h"
#include "receiver/Assistance.h"
#include "service/Replies.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>
#include <map>

namespace {

using gnss::AssistSystem;
using Bytes = std::vector<std::uint8_t>;
using Item = std::pair<std::uint16_t, std::string>;

constexpr std::uint32_t kNow = 1773480413; // when the driver's receiver is switched on
constexpr int kRuns = 10;
constexpr vrx::Millis kAckMillis = 50; // the way to the receiver and back

std::string Text(const Bytes& bytes)
{
    return std::string(bytes.begin(), bytes.end());
}

const pgnss::Seed& Sky()
{
    static const pgnss::Seed seed = pgnss::MakeModelSeed(kNow, kNow - 7200, kNow + 86400);
    return seed;
}

std::string Ephemeris(AssistSystem system, std::uint32_t toe = kNow)
{
    return Text(gnss::MakeAssistEphemeris(system, kNow, pgnss::OrbitsAt(Sky(), system, toe)));
}

std::string UtcTime(std::uint32_t unixSeconds)
{
    return UtcTimeRecord(QDateTime::fromSecsSinceEpoch(unixSeconds, Qt::UTC)).toStdString();
}

/// Makes the check right again.
std::string Resealed(std::string payload)
{
    payload.resize(payload.size() - 4);
    gnss::ImageWriter image;
    image.Raw(payload.data(), payload.size());
    image.Check();
    return Text(image.Bytes());
}

vrx::ReceiverOptions Idle()
{
    auto options = ReceiverDriver::Options();
    options.idle = true;
    return options;
}

/// The offline assistance's chain as the workbench sends it.
std::vector<Item> OfflineChain(std::uint32_t time)
{
    std::vector<pgnss::OutputFile> files;
    pgnss::ExpandSeed(Sky(), time, files);
    const auto file = [&files](const std::string& name) {
        for (const pgnss::OutputFile& each : files) {
            if (each.name == name) {
                return Text(each.bytes);
            }
        }
        return std::string();
    };
    const std::uint32_t ahead = time / 7200 * 7200 + 7200;
    const std::string latest = std::to_string(ahead) + ".eph";
    const std::string nearest = std::to_string((time + 900) / 1800 * 1800) + ".eph";
    return {{1028, UtcTime(time)},        {513, ReferenceTimeRecord(time).toStdString()},
            {515, file("GPS_" + latest)}, {516, file("GLO_" + nearest)},
            {516, file("BDS_" + latest)}, {516, file("GAL_" + latest)},
            {516, file("QZS_" + latest)}, {517, file("GPS_UTC.dat")},
            {520, file("GPS_ION.dat")},   {518, file("GPS_RTI.dat")},
            {519, file("GLO_RTI.dat")},   {521, file("GLO_AUX.dat")},
            {519, file("BDS_RTI.dat")},   {519, file("GAL_RTI.dat")}};
}

/// The online assistance's records, with the time in front.
std::vector<Item> OnlineRecords(std::uint32_t time)
{
    std::vector<Item> items = {{gnss::CmdUtcTime, UtcTime(time)}};
    for (const assistance::TaggedRecord& record : assistance::MakeRecords(15, 31, time * vrx::Millis{1000})) {
        items.push_back({gnss::FindAgnssTag(record.tag)->commandId, Text(record.payload)});
    }
    return items;
}

/// One good payload for every command that carries an item.
std::vector<Item> OneOfEach()
{
    std::vector<Item> items = OfflineChain(kNow);
    for (const Item& item : OnlineRecords(kNow)) {
        items.push_back(item);
    }
    std::map<std::uint16_t, std::string> each;
    for (const Item& item : items) {
        if (gnss::FindAssistForm(item.first) != nullptr) {
            each.insert(item);
        }
    }
    each[gnss::CmdPgnssFineIonosphere] = Text(gnss::MakeAssistGrid(kNow, pgnss::MakeModelGrid(47, 8, kNow)));
    return {each.begin(), each.end()};
}

/// Seconds from a cold start to the first fix, with items injected behind it, each when the one before is
/// answered.
double ColdStart(const vrx::ReceiverOptions& options, const std::vector<Item>& items)
{
    ReceiverDriver driver(options);
    driver.Run(60000);
    const vrx::Millis began = driver.now;
    if (driver.Command(ReceiverDriver::Bytes(ReceiverDriver::kColdStart)) != 0) {
        return -2.0;
    }
    for (const Item& item : items) {
        driver.Run(kAckMillis);
        if (driver.Command(ReceiverDriver::Frame(item.first, item.second)) != 0) {
            return -3.0;
        }
    }
    if (driver.SecondsToFix(120) < 0.0) {
        return -1.0;
    }
    return static_cast<double>(driver.now - began) / 1000.0;
}

} // namespace

class ReceiverAssistanceTest : public QObject {
    Q_OBJECT

private slots:
    void EveryItemIsUnderstood()
    {
        ReceiverDriver driver(Idle());
        std::vector<Item> items = OneOfEach();
        QCOMPARE(items.size(), std::size(gnss::kAssistForms));
        for (const Item& item : items) {
            const QByteArray what = QByteArray::number(item.first);
            QVERIFY2(driver.Command(ReceiverDriver::Frame(item.first, item.second)) == 0, what);
            // Any byte that came over wrong is noticed.
            for (std::size_t i = 0; i < item.second.size(); i += 1 + item.second.size() / 60) {
                std::string spoilt = item.second;
                spoilt[i] = static_cast<char>(spoilt[i] ^ 0x40);
                QVERIFY2(driver.Command(ReceiverDriver::Frame(item.first, spoilt)) == 2, what);
            }
            const std::string cut = item.second.substr(0, item.second.size() - 1);
            const int status = driver.Command(ReceiverDriver::Frame(item.first, cut));
            QVERIFY2(status == 1 || status == 2, what);
            // The item of another command is refused there.
            for (const Item& other : items) {
                gnss::AssistHeader header;
                gnss::ImageReader body(nullptr, 0);
                const auto* p = reinterpret_cast<const std::uint8_t*>(other.second.data());
                QVERIFY(gnss::ReadAssistHeader(p, other.second.size(), header, body));
                const gnss::AssistForm& form = *gnss::FindAssistForm(item.first);
                const bool fits = form.kind == header.kind && (form.systems & gnss::SystemBit(header.system)) != 0;
                QCOMPARE(driver.Command(ReceiverDriver::Frame(item.first, other.second)) == 0, fits);
            }
        }
    }

    void ValuesOutOfRange()
    {
        const auto orbit = [](auto change) {
            auto orbits = pgnss::OrbitsAt(Sky(), AssistSystem::Gps, kNow);
            change(orbits[1]);
            return Text(gnss::MakeAssistEphemeris(AssistSystem::Gps, kNow, orbits));
        };
        const auto byte = [](const std::string& payload, std::size_t at, char value) {
            std::string changed = payload;
            changed[at] = value;
            return Resealed(changed);
        };
        const std::string gps = Ephemeris(AssistSystem::Gps);
        const std::string time = Text(gnss::MakeAssistTime(AssistSystem::Gps, kNow, {kNow, 0, 0}));
        gnss::AssistGrid grid = pgnss::MakeModelGrid(47, 8, kNow);
        grid.latitudeStep = -1.0f;
        const Item rows[] = {
            {515, orbit([](gnss::AssistOrbit& o) { o.number = 0; })},
            {515, orbit([](gnss::AssistOrbit& o) { o.fit = 0; })},
            {515, orbit([](gnss::AssistOrbit& o) { o.radius = std::nan(""); })},
            {515, orbit([](gnss::AssistOrbit& o) { o.inclination = -0.1; })},
            {515, orbit([](gnss::AssistOrbit& o) { o.node = 7.0; })},
            {515, byte(gps, 2, 2)},  // version
            {515, byte(gps, 1, 5)},  // system
            {515, byte(gps, 3, 30)}, // count
            {515, byte(gps, 3, 0)},
            {769, byte(time, 3, 2)},
            {769, Text(gnss::MakeAssistTime(AssistSystem::Gps, kNow, {kNow, 1000, 0}))},
            {517, Text(gnss::MakeAssistUtc(AssistSystem::Gps, kNow, {std::nan(""), 0.0, kNow, 18, 18}))},
            {521, Text(gnss::MakeAssistChannels(AssistSystem::Glonass, kNow, {{1, 7, 1}}))},
            {522, Text(gnss::MakeAssistGrid(kNow, grid))},
        };
        ReceiverDriver driver(Idle());
        int row = 0;
        for (const Item& item : rows) {
            const int status = driver.Command(ReceiverDriver::Frame(item.first, item.second));
            QVERIFY2(status == 2, qPrintable(QString("row %1: %2").arg(row).arg(status)));
            ++row;
        }
    }

    // The image that docs/receiver-link.md shows.
    void DocumentedImage()
    {
        const gnss::AssistUtc model{std::ldexp(1.0, -30), std::ldexp(1.0, -50), kNow - 1613, 18, 18};
        const std::string shown =
            ReceiverDriver::Bytes("03000101dd29b56900000000000010 3e000000000000d03c9023b569121200 00539bed2a");
        QCOMPARE(Text(gnss::MakeAssistUtc(AssistSystem::Gps, kNow, model)), shown);
    }

    // Items that are whole but of no use are taken and change nothing.
    void WhatIsStaleOrFalseDoesNotHelp()
    {
        auto shifted = pgnss::OrbitsAt(Sky(), AssistSystem::Gps, kNow);
        for (gnss::AssistOrbit& orbit : shifted) {
            orbit.argument = std::fmod(orbit.argument + 0.01, 6.28);
        }
        auto sick = pgnss::OrbitsAt(Sky(), AssistSystem::Gps, kNow);
        for (gnss::AssistOrbit& orbit : sick) {
            orbit.health = 1;
        }
        const Item helpless[] = {
            {515, Ephemeris(AssistSystem::Gps, kNow - 7300)},
            {516, Ephemeris(AssistSystem::Glonass, kNow - 1900)},
            {515, Text(gnss::MakeAssistEphemeris(AssistSystem::Gps, kNow, shifted))},
            {515, Text(gnss::MakeAssistEphemeris(AssistSystem::Gps, kNow, sick))},
            {769, Text(gnss::MakeAssistTime(AssistSystem::Gps, kNow, {kNow + 3700, 0, 0}))},
        };
        for (const Item& item : helpless) {
            ReceiverDriver driver(Idle());
            QCOMPARE(driver.Command(ReceiverDriver::Frame(item.first, item.second)), 0);
            const vrx::Memory& known = driver.receiver.Engine().Known();
            QVERIFY(!known.timeKnown);
            for (std::size_t i = 0; i < known.ephemerisUntil.size(); ++i) {
                QVERIFY(!known.HasEphemeris(i, driver.receiver.UtcAt(driver.now)));
            }
        }
        // A satellite that must not be used loses its ephemeris.
        ReceiverDriver driver(Idle());
        QCOMPARE(driver.Command(ReceiverDriver::Frame(515, Ephemeris(AssistSystem::Gps))), 0);
        QVERIFY(driver.receiver.Engine().Known().HasEphemeris(0, kNow * vrx::Millis{1000}));
        const auto warning = gnss::MakeAssistIntegrity(AssistSystem::Gps, kNow, {1});
        QCOMPARE(driver.Command(ReceiverDriver::Frame(518, Text(warning))), 0);
        std::size_t left = 0;
        for (std::size_t i = 0; i < vrx::AllOrbits().size(); ++i) {
            left += driver.receiver.Engine().Known().HasEphemeris(i, kNow * vrx::Millis{1000}) ? 1 : 0;
        }
        QCOMPARE(left, std::size_t{30});
    }

    void AssistanceShortensTheColdStart()
    {
        const std::uint32_t time = kNow + 60;
        auto options = ReceiverDriver::Options();
        options.memoryKept = true;
        const ReferencePosition place = {options.place.longitude, options.place.latitude, options.place.altitude};
        const Item position = {gnss::CmdAgnssPosition, ReferencePositionRecord(place).toStdString()};
        struct {
            const char* name;
            std::vector<Item> items;
            double fastest = 1e9;
            double slowest = 0.0;
        } ways[] = {{"without assistance", {}},
                    {"offline", OfflineChain(time)},
                    {"offline with position", OfflineChain(time)},
                    {"online", OnlineRecords(time)},
                    {"online with position", OnlineRecords(time)}};
        ways[2].items.push_back(position);
        ways[4].items.push_back(position);
        for (auto& way : ways) {
            double sum = 0.0;
            for (int run = 1; run <= kRuns; ++run) {
                options.seed = static_cast<std::uint64_t>(run);
                const double taken = ColdStart(options, way.items);
                QVERIFY2(taken > 0.0, qPrintable(QString::number(taken)));
                way.slowest = std::max(way.slowest, taken);
                way.fastest = std::min(way.fastest, taken);
                sum += taken;
            }
            qInfo("cold start, %s: mean %.1f s, %.1f to %.1f", way.name, sum / kRuns, way.fastest, way.slowest);
        }
        QVERIFY(ways[0].fastest > 15.0);
        for (int way = 1; way < 5; ++way) {
            QVERIFY(ways[way].slowest < (way % 2 == 0 ? 5.0 : ways[0].fastest / 2));
        }
    }

    void AColdStartAtEveryStartForgetsIt()
    {
        ReceiverDriver driver(Idle());
        for (const Item& item : OfflineChain(kNow)) {
            QCOMPARE(driver.Command(ReceiverDriver::Frame(item.first, item.second)), 0);
        }
        QCOMPARE(driver.Command(ReceiverDriver::Frame(gnss::CmdStartMode, std::string(1, '\1'))), 0);
        driver.SendBytes(ReceiverDriver::Bytes(ReceiverDriver::kStart));
        QVERIFY(driver.SecondsToFix(60) > 15.0);
    }

    // The sample library makes a receiver at the scene's place and time start hot.
    void SampleScenes()
    {
        const QString library = QStringLiteral(GNSS_SOURCE_DIR "/docs/scenes/");
        QFile json(library + "sence.json");
        QVERIFY(json.open(QIODevice::ReadOnly));
        const QJsonArray scenes = QJsonDocument::fromJson(json.readAll()).object().value("sence").toArray();
        QCOMPARE(scenes.size(), 3);
        for (const auto& each : scenes) {
            const QJsonObject scene = each.toObject();
            const auto start = scene.value("unix_start_time").toString().toULongLong();
            auto options = Idle();
            options.utcAtPowerOn = static_cast<vrx::Millis>(start) * 1000;
            options.place = {scene.value("latitude").toString().toDouble(),
                             scene.value("longitude").toString().toDouble(),
                             scene.value("altitude").toString().toDouble()};
            options.motion = vrx::Motion::Still(options.place);
            QCOMPARE(
                QDateTime::fromSecsSinceEpoch(static_cast<qint64>(start), Qt::UTC).toString("yyyy-MM-dd hh:mm:ss"),
                scene.value("utc_start").toString());
            const auto file = [&](const char* name) {
                QFile content(library + scene.value("name").toString() + '/' + name);
                return content.open(QIODevice::ReadOnly) ? content.readAll().toStdString() : std::string();
            };
            ReceiverDriver driver(options);
            const std::vector<Item> items = {
                {1028, UtcTime(static_cast<std::uint32_t>(start))},
                {514, ScenePositionRecord(options.place.longitude, options.place.latitude).toStdString()},
                {522, file("ION_CUT.bin")},
                {515, file("GPS_PGNSS_REPLAY_FILE")},
                {516, file("GLO_PGNSS_REPLAY_FILE")},
                {516, file("BDS_PGNSS_REPLAY_FILE")},
                {516, file("GAL_PGNSS_REPLAY_FILE")},
                {516, file("QZSS_PGNSS_REPLAY_FILE")}};
            for (const Item& item : items) {
                QCOMPARE(driver.Command(ReceiverDriver::Frame(item.first, item.second)), 0);
            }
            driver.SendBytes(ReceiverDriver::Bytes(ReceiverDriver::kStart));
            const double seconds = driver.SecondsToFix(60);
            QVERIFY2(seconds > 0.0 && seconds < 4.0, qPrintable(QString::number(seconds)));
            QCOMPARE(driver.receiver.Engine().Kind(), vrx::StartKind::Hot);
        }
    }
};

QTEST_GUILESS_MAIN(ReceiverAssistanceTest)
#include "tst_receiver_assistance.moc"
