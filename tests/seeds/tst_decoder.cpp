// SPDX-License-Identifier: MIT
#include "receiver/Assistance.h"
#include "seeds/ModelSky.h"
#include "seeds/SeedFile.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

#include <cmath>
#include <dlfcn.h>
#include <functional>
#include <random>

using seeds::SeedError;
using Bytes = std::vector<std::uint8_t>;

namespace {

constexpr std::uint32_t kStart = 1773478800; // 2026-03-14 09:00:00
constexpr std::uint32_t kDay = 86400;
constexpr std::size_t kSections = seeds::kSeedHeaderSize;

seeds::Seed SmallSeed()
{
    seeds::Seed seed;
    seed.issued = kStart;
    seed.validStart = kStart;
    seed.validEnd = kStart + kDay;
    for (seeds::SeedSystem& system : seed.systems) {
        system.sets.push_back({kStart, kStart, kStart + kDay, {{3, 0, 0, 1, 2.65e7, 0.9, 1.0, 2.0}}});
        system.integrity.emplace();
    }
    seed.utc.emplace();
    seed.ionosphere.emplace();
    return seed;
}

void SetU32(Bytes& image, std::size_t at, std::uint32_t value)
{
    for (std::size_t i = 0; i < 4; ++i) {
        image[at + i] = static_cast<std::uint8_t>(value >> (8 * i));
    }
}

/// Makes length and checks right again, so that only the content is wrong.
void Repair(Bytes& image)
{
    SetU32(image, 12, static_cast<std::uint32_t>(image.size()));
    SetU32(image, 28, protocol::Crc32(image.data(), 28));
    SetU32(image, image.size() - 4, protocol::Crc32(image.data(), image.size() - 4));
}

bool Documented(int code)
{
    return code >= 1 && code <= 16 &&
           std::strcmp(seeds::TextOf(static_cast<SeedError>(code)), "unknown error") != 0;
}

} // namespace

class PgnssTest : public QObject {
    Q_OBJECT

private slots:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void initTestCase()
    {
        void* library = dlopen(PGNSS_DECODER, RTLD_NOW | RTLD_LOCAL);
        QVERIFY2(library != nullptr, dlerror());
        *reinterpret_cast<void**>(&m_valid) = dlsym(library, "GetPgnssDataValidTime");
        *reinterpret_cast<void**>(&m_parse) = dlsym(library, "ParsePgnssData");
        QVERIFY(m_valid != nullptr && m_parse != nullptr);
        QVERIFY(dlsym(library, "_ZN5pgnss9ParseSeedEPKhmRNS_4SeedE") == nullptr);
    }

    // The bytes of a seed whose fields have values of their own; the checks stand behind bytes 28 and the last
    // section.
    void TheLayoutIsThePublishedOne()
    {
        seeds::Seed seed = SmallSeed();
        seed.issued = 0x01020304;
        seeds::SeedOrbitSet& set = seed.systems[2].sets[0];
        set.epoch = 1773500000;
        set.orbits[0] = {7, 2, -4, 3, 2.65e7, 0.5, -1.25, 2.0};
        seed.systems[0].integrity->unusable = 0x8000000000000001;
        *seed.utc = {0.5, 2.98023223876953125e-08, 0x0A0B0C0D, 18, 19};
        *seed.ionosphere = {{{0.5F, 0.25F, -0.125F, -0.0625F}}, {{96.0F, -32.0F, -16.0F, 8.0F}}};
        const Bytes packed = seeds::PackSeed(seed);
        const QByteArray image(reinterpret_cast<const char*>(packed.data()), static_cast<int>(packed.size()));
        const auto shown = [&image](int at, const char* hex) {
            const QByteArray expected = QByteArray::fromHex(hex);
            return image.mid(at, expected.size()) == expected;
        };
        // Of each system 60 bytes of orbits and 16 of integrity.
        QVERIFY(shown(0, "894757530d0a1a0a01000c00e8010000040302019023b5691075b669"));
        QVERIFY(shown(32 + 60, "04000100080000000100000000000080"));
        QVERIFY(shown(32 + 2 * 76, "01020100340000006076b5699023b5691075b6690702fc030000000000000000"
                                   "ba457941000000000000e03f000000000000f4bf0000000000000040"));
        QVERIFY(shown(32 + 5 * 76, "0200010018000000000000000000e03f000000000000603e0d0c0b0a12130000"));
        QVERIFY(shown(32 + 5 * 76 + 32, "03000100200000000000003f0000803e000000be000080bd0000c042000000c2"
                                        "000080c100000041"));
        QCOMPARE(image.size(), 488);
        seeds::Seed read;
        QCOMPARE(seeds::ParseSeed(packed.data(), packed.size(), read), SeedError::None);
        QVERIFY(seeds::PackSeed(read) == packed);
    }

    void ExactlyTheFilesOfTheMoment()
    {
        QDir(m_folder->path()).mkdir(QStringLiteral("Ordner mit ü"));
        const QByteArray seed =
            Put(seeds::PackSeed(seeds::MakeModelSeed(kStart, kStart, kStart + 7 * kDay)), "Ordner mit ü/EE.dat");
        const QString out = Path("Ordner mit ü");
        std::uint32_t start = 0;
        std::uint32_t end = 0;
        QCOMPARE(m_valid(seed.constData(), &start, &end), 0);
        QVERIFY(start == kStart && end == kStart + 7 * kDay);
        const std::uint32_t time = kStart + 1613; // 09:26:53
        QCOMPARE(m_parse(seed.constData(), out.toUtf8().constData(), time, 1), 0);
        QStringList expected{"EE.dat",      "GPS_UTC.dat", "GPS_ION.dat", "GPS_RTI.dat",
                             "GLO_RTI.dat", "GLO_AUX.dat", "BDS_RTI.dat", "GAL_RTI.dat"};
        for (const char* system : {"GPS", "BDS", "GAL", "QZS"}) {
            for (const int toe : {1773468000, 1773475200, 1773482400}) {
                expected << QStringLiteral("%1_%2.eph").arg(system).arg(toe);
            }
        }
        for (const int toe : {1773478800, 1773480600, 1773482400}) { // the middle one is the nearest half hour
            expected << QStringLiteral("GLO_%1.eph").arg(toe);
        }
        expected.sort();
        QStringList found = QDir(out).entryList(QDir::Files);
        found.sort();
        QCOMPARE(found, expected);
    }

    // What the workbench does with the names: the latest one that is not more than two hours ahead; GLONASS within
    // 15 minutes on both sides.
    void TheChosenEphemerisServesAtAnyMoment()
    {
        const seeds::Seed seed = seeds::MakeModelSeed(kStart, kStart, kStart + 2 * kDay);
        std::vector<seeds::OutputFile> files;
        for (std::uint32_t time = seed.validStart; time <= seed.validEnd; time += 450) {
            QCOMPARE(seeds::ExpandSeed(seed, time, files), SeedError::None);
            QHash<QString, qint64> chosen;
            for (const seeds::OutputFile& file : files) {
                const QString name = QString::fromStdString(file.name);
                if (!name.endsWith(".eph")) {
                    continue;
                }
                QVERIFY(QRegularExpression("^(GPS|GLO|BDS|GAL|QZS)_[0-9]{10}\\.eph$").match(name).hasMatch());
                const qint64 ahead = name.mid(4, 10).toLongLong() - qint64{time};
                if (name.startsWith("GLO") ? std::llabs(ahead) <= 900 : ahead <= 7200) {
                    chosen[name.left(3)] = std::max(chosen.value(name.left(3), -1000000), ahead);
                }
            }
            QCOMPARE(chosen.size(), 5);
            for (auto each = chosen.cbegin(); each != chosen.cend(); ++each) {
                QVERIFY(std::llabs(each.value()) <= (each.key() == "GLO" ? 900 : 7200));
            }
        }
        QCOMPARE(seeds::ExpandSeed(seed, seed.validStart - 1, files), SeedError::OutsideSpan);
        QCOMPARE(seeds::ExpandSeed(seed, seed.validEnd + 1, files), SeedError::OutsideSpan);
    }

    void ItemsSayWhatTheSkyShows()
    {
        const seeds::Seed seed = seeds::MakeModelSeed(kStart, kStart, kStart + 28 * kDay);
        std::vector<seeds::OutputFile> files;
        QCOMPARE(seeds::ExpandSeed(seed, kStart + 27 * kDay + 1234, files), SeedError::None);
        const char* prefixes[] = {"GPS", "BDS", "GLO", "GAL", "QZS"};
        int satellites = 0;
        for (const seeds::OutputFile& file : files) {
            protocol::AssistHeader header;
            protocol::ImageReader body(nullptr, 0);
            QVERIFY(protocol::ReadAssistHeader(file.bytes.data(), file.bytes.size(), header, body));
            QCOMPARE(file.name.substr(0, 3), std::string(prefixes[static_cast<int>(header.system)]));
            std::vector<protocol::AssistOrbit> orbits;
            if (header.kind != protocol::AssistKind::Ephemeris) {
                continue;
            }
            QVERIFY(protocol::ReadAssistEphemeris(header, body, orbits));
            for (const protocol::AssistOrbit& orbit : orbits) {
                QCOMPARE(std::to_string(orbit.toe), file.name.substr(4, 10));
                for (const receiver::Orbit& real : receiver::AllOrbits()) {
                    if (static_cast<int>(real.system) != static_cast<int>(header.system) ||
                        receiver::NumberInSystem(real) != orbit.number) {
                        continue;
                    }
                    const receiver::Millis later = (orbit.toe + receiver::Millis{3000}) * 1000;
                    const receiver::Vector3 a = receiver::PredictedPosition(orbit, later);
                    const receiver::Vector3 b = receiver::PositionAt(real, later);
                    QVERIFY(std::hypot(a.x - b.x, a.y - b.y, a.z - b.z) < 1.0);
                    ++satellites;
                }
            }
        }
        QCOMPARE(satellites, 3 * int(receiver::AllOrbits().size()));
    }

    void CutAtEveryByte()
    {
        const Bytes whole = seeds::PackSeed(SmallSeed());
        QCOMPARE(Both(whole), 0);
        for (std::size_t length = 0; length < whole.size(); ++length) {
            QCOMPARE(Both(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length))), 3);
        }
        Bytes longer = whole;
        longer.push_back(0);
        QCOMPARE(Both(longer), 7);
    }

    void EveryByteChanged()
    {
        const Bytes whole = seeds::PackSeed(SmallSeed());
        for (std::size_t i = 0; i < whole.size(); ++i) {
            const int expected = i < 8 ? 4 : i < seeds::kSeedHeaderSize ? 6 : 8;
            for (const int bits : {0x01, 0x80, 0xFF}) {
                Bytes spoilt = whole;
                spoilt[i] = static_cast<std::uint8_t>(spoilt[i] ^ bits);
                QVERIFY2(Both(spoilt) == expected, qPrintable(QString("byte %1").arg(i)));
            }
        }
    }

    void WrongContentWithRightChecks()
    {
        const auto packed = [](const std::function<void(seeds::Seed&)>& change) {
            seeds::Seed seed = SmallSeed();
            change(seed);
            return seeds::PackSeed(seed);
        };
        const auto patched = [](std::size_t at, std::uint8_t value) {
            Bytes image = seeds::PackSeed(SmallSeed());
            image[at] = value;
            Repair(image);
            return image;
        };
        const double nan = std::numeric_limits<double>::quiet_NaN();
        const std::pair<Bytes, int> rows[] = {
            {patched(8, 2), 5},                // version
            {patched(kSections, 9), 9},        // unknown type
            {patched(kSections + 1, 5), 9},    // unknown system
            {patched(kSections + 2, 2), 9},    // more orbits than bytes
            {patched(kSections + 4, 51), 9},   // a byte less
            {patched(kSections + 7, 0x80), 9}, // 2 GiB
            {patched(10, 11), 9},              // a section less than there are
            {patched(10, 13), 9},              // one more
            {patched(kSections + 24, 1), 10},  // a reserved field
            {packed([](auto& s) { s.systems[0].sets[0].orbits[0].number = 0; }), 10},
            {packed([](auto& s) { s.systems[1].sets[0].orbits[0].number = 65; }), 10},
            {packed([](auto& s) { s.systems[0].sets[0].orbits.push_back(s.systems[0].sets[0].orbits[0]); }), 10},
            {packed([](auto& s) { s.systems[0].sets[0].orbits[0].channel = -1; }), 10},
            {packed([](auto& s) { s.systems[2].sets[0].orbits[0].channel = 7; }), 10},
            {packed([](auto& s) { s.systems[3].sets[0].orbits[0].radius = 0.0; }), 10},
            {packed([nan](auto& s) { s.systems[4].sets[0].orbits[0].node = nan; }), 10},
            {packed([nan](auto& s) { s.utc->a0 = nan; }), 10},
            {packed([](auto& s) { s.ionosphere->beta[3] = std::numeric_limits<float>::infinity(); }), 10},
            {packed([](auto& s) { s.systems[0].sets[0].until = s.systems[0].sets[0].from; }), 10},
            {packed([](auto& s) { s.systems[0].sets[0].orbits.clear(); }), 9},
            {packed([](auto& s) { s.validEnd = s.validStart; }), 11},
            {packed([](auto& s) { s.validStart = 999999999; }), 11},
            {packed([](auto& s) { s.validEnd = 0xFFFFFFFF; }), 11},
            {packed([](auto& s) { s.validEnd = s.validStart + 61 * kDay; }), 11},
            {packed([](auto& s) { s.systems[4].sets.clear(); }), 12},
            {packed([](auto& s) { s.systems[2].sets[0].from += 1; }), 12},
            {packed([](auto& s) { s.systems[2].sets[0].until -= 1; }), 12},
            {packed([](auto& s) { // a gap between two sets of orbits
                 auto& sets = s.systems[0].sets;
                 sets.push_back(sets[0]);
                 sets[0].until = kStart + 100;
                 sets[1].from = kStart + 101;
             }),
             12},
            {packed([](auto& s) { s.systems[2].integrity.reset(); }), 12},
            {packed([](auto& s) { s.utc.reset(); }), 12},
            {packed([](auto& s) { s.ionosphere.reset(); }), 12},
        };
        int row = 0;
        for (const auto& [image, expected] : rows) {
            const int code = Both(image);
            QVERIFY2(code == expected, qPrintable(QString("row %1: %2").arg(row).arg(code)));
            ++row;
        }
    }

    void RandomContentWithRightChecks()
    {
        const Bytes whole = seeds::PackSeed(SmallSeed());
        std::mt19937 random(5);
        int refused = 0;
        for (int run = 0; run < 20000; ++run) {
            Bytes image = whole;
            for (int changes = static_cast<int>(random() % 4); changes >= 0; --changes) {
                image[8 + random() % (image.size() - 8)] = static_cast<std::uint8_t>(random());
            }
            if (random() % 4 == 0) {
                image.resize(40 + random() % 2000);
            }
            Repair(image);
            seeds::Seed seed;
            const int code = static_cast<int>(seeds::ParseSeed(image.data(), image.size(), seed));
            QVERIFY(code == 0 || Documented(code));
            refused += code != 0 ? 1 : 0;
            std::vector<seeds::OutputFile> files;
            if (code == 0) {
                QCOMPARE(seeds::ExpandSeed(seed, seed.validEnd, files), SeedError::None);
            }
        }
        QVERIFY(refused > 1000 && refused < 19900);
    }

    void BadArguments()
    {
        const QByteArray good = Put(seeds::PackSeed(SmallSeed()));
        const QByteArray out = m_folder->path().toUtf8();
        std::uint32_t time = 0;
        QCOMPARE(m_valid(nullptr, &time, &time), 1);
        QCOMPARE(m_valid("", &time, &time), 1);
        QCOMPARE(m_valid(good.constData(), nullptr, &time), 1);
        QCOMPARE(m_valid(good.constData(), &time, nullptr), 1);
        QCOMPARE(m_parse(nullptr, out.constData(), kStart, 1), 1);
        QCOMPARE(m_parse(good.constData(), nullptr, kStart, 1), 1);
        QCOMPARE(m_parse(good.constData(), "", kStart, 1), 1);
        QCOMPARE(m_parse(good.constData(), out.constData(), kStart, 2), 1);
        QCOMPARE(m_valid(Path("missing").toUtf8().constData(), &time, &time), 2);
        QCOMPARE(m_valid(out.constData(), &time, &time), 2); // a directory
        QCOMPARE(m_valid("/dev/zero", &time, &time), 2);
        QFile sparse(Path("big"));
        QVERIFY(sparse.open(QIODevice::WriteOnly) && sparse.resize((16 << 20) + 1));
        QCOMPARE(m_valid(Path("big").toUtf8().constData(), &time, &time), 7);
        QCOMPARE(m_parse(good.constData(), out.constData(), kStart - 1, 1), 13);
        QCOMPARE(m_parse(good.constData(), out.constData(), kStart + kDay + 1, 1), 13);
        QCOMPARE(m_parse(good.constData(), Path("none").toUtf8().constData(), kStart, 1), 14);
        QCOMPARE(m_parse(good.constData(), good.constData(), kStart, 1), 14); // a file
        QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files, QDir::Size), QStringList({"big", "EE.dat"}));
    }

    void OutputThatCannotBeWritten()
    {
        const QByteArray seed = Put(seeds::PackSeed(SmallSeed()));
        // A directory stands where the last but two file belongs; a foreign file keeps its name.
        QVERIFY(QDir(m_folder->path()).mkpath(QStringLiteral("out/GLO_AUX.dat")));
        Put({1, 2, 3}, "out/GPS_0.eph");
        QCOMPARE(m_parse(seed.constData(), Path("out").toUtf8().constData(), kStart, 1), 15);
        QCOMPARE(QDir(Path("out")).entryList(QDir::Files), QStringList({"GPS_0.eph"}));
        // A link is replaced, and what it points to is left alone.
        QVERIFY(QDir(Path("out")).rmdir("GLO_AUX.dat"));
        QVERIFY(QFile::link(Path("EE.dat"), Path("out/GPS_UTC.dat")));
        QCOMPARE(m_parse(seed.constData(), Path("out").toUtf8().constData(), kStart, 1), 0);
        QVERIFY(!QFileInfo(Path("out/GPS_UTC.dat")).isSymLink());
        std::uint32_t time = 0;
        QCOMPARE(m_valid(seed.constData(), &time, &time), 0);
    }

private:
    QString Path(const char* name) const { return m_folder->filePath(QString::fromUtf8(name)); }
    QByteArray Put(const Bytes& image, const char* name = "EE.dat") const
    {
        QByteArray path = Path(name).toUtf8();
        QFile file(Path(name));
        if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) ||
            file.write(reinterpret_cast<const char*>(image.data()), static_cast<qint64>(image.size())) !=
                static_cast<qint64>(image.size())) {
            qFatal("the test's own file cannot be written");
        }
        return path;
    }
    /// Both entry points; -1 when they disagree on a seed that is bad.
    int Both(const Bytes& image) const
    {
        const QByteArray path = Put(image);
        std::uint32_t start = 7;
        std::uint32_t end = 8;
        const int valid = m_valid(path.constData(), &start, &end);
        const QByteArray out = m_folder->path().toUtf8();
        const int parsed = m_parse(path.constData(), out.constData(), kStart, 1);
        if (valid != 0 && (start != 7 || end != 8)) {
            return -2;
        }
        return valid == parsed ? valid : -1;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    int (*m_valid)(const char*, std::uint32_t*, std::uint32_t*) = nullptr;
    int (*m_parse)(const char*, const char*, std::uint32_t, int) = nullptr;
};

QTEST_GUILESS_MAIN(PgnssTest)
#include "tst_decoder.moc"
