#include "Collector.h"

#include <QFileInfo>
#include <QProcess>
#include <QtTest>

#include <dlfcn.h>

namespace {

QVector<int> g_called;
QByteArray g_log;
void (*g_decode)(const quint8*, quint32) = nullptr;

template <int Number> void Callback(const void* data, int length)
{
    if ((data == nullptr) == (length == 0)) {
        g_called.append(Number);
    }
}

void LogHandler(const char* file, int line, const char* function, const char* format, va_list arguments)
{
    g_log += QString::vasprintf(format, arguments).toUtf8();
    g_log += file != nullptr && function != nullptr && line > 0 ? "\n" : "?\n";
}

const char* const kExports[] = {"InitGnssUtils", "RegGnssCallbacks", "RegLogHandle", "GetLibVersion",
                                "SetChipType",   "GnssDecode",       "GnssEncode",   "GnssSleepSwitch",
                                "Lla2Enu",       "DeinitGnss"};

} // namespace

class BoundaryTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup() { g_called.clear(); }
    void ExportsAreExactlyTheContract();
    void CallsBeforeInitAreHarmless();
    void CallbacksAreServed();
    void InitForgetsEverything();
    void UnloadsAndLoadsAgain();

private:
    template <typename Function> Function Resolve(const char* name)
    {
        return reinterpret_cast<Function>(dlsym(m_library, name));
    }
    void Decode(const QByteArray& bytes)
    {
        g_decode(reinterpret_cast<const quint8*>(bytes.constData()), quint32(bytes.size()));
    }
    void Load();

    const QByteArray m_path = QByteArrayLiteral(GNSS_BUILD_BIN "/Source-Datas/bin/GnssUtils.dll");
    void* m_library = nullptr;
};

void BoundaryTest::Load()
{
    m_library = dlopen(m_path.constData(), RTLD_NOW | RTLD_LOCAL);
    QVERIFY2(m_library != nullptr, dlerror());
    g_decode = Resolve<void (*)(const quint8*, quint32)>("GnssDecode");
}

void BoundaryTest::initTestCase()
{
    Load();
}

void BoundaryTest::ExportsAreExactlyTheContract()
{
    for (const char* name : kExports) {
        QVERIFY2(dlsym(m_library, name) != nullptr, name);
    }
    QProcess nm;
    nm.start("nm", {"-D", "--defined-only", QString::fromUtf8(m_path)});
    if (!nm.waitForFinished() || nm.exitCode() != 0) {
        QSKIP("no nm here");
    }
    QSet<QByteArray> names;
    for (const QByteArray& line : nm.readAllStandardOutput().trimmed().split('\n')) {
        const QByteArray name = line.mid(line.lastIndexOf(' ') + 1);
        if (!name.contains("asan") && !name.contains("odr")) {
            names.insert(name);
        }
    }
    QSet<QByteArray> expected;
    for (const char* name : kExports) {
        expected.insert(name);
    }
    QCOMPARE(names, expected);
}

void BoundaryTest::CallsBeforeInitAreHarmless()
{
    quint8 out[32];
    Decode(Sentence("GPTXT,01,01,02,x"));
    g_decode(nullptr, 5);
    Resolve<void (*)(quint32, void*)>("RegGnssCallbacks")(0, reinterpret_cast<void*>(Callback<0>));
    Resolve<void (*)(void*)>("RegLogHandle")(nullptr);
    Resolve<void (*)(quint32)>("GnssSleepSwitch")(0);
    Resolve<void (*)(quint32)>("DeinitGnss")(7);
    Resolve<void (*)(quint32)>("SetChipType")(31);
    QCOMPARE(Resolve<int (*)(quint32, const void*, quint32, void*, quint32)>("GnssEncode")(2, nullptr, 0, out, 32),
             -1);
    QVERIFY(Resolve<int (*)()>("GetLibVersion")() > 0);
    QVERIFY(g_called.isEmpty());
}

void BoundaryTest::CallbacksAreServed()
{
    QCOMPARE(Resolve<int (*)()>("InitGnssUtils")(), 0);
    const auto reg = Resolve<void (*)(quint32, void*)>("RegGnssCallbacks");
    reg(0, reinterpret_cast<void*>(Callback<0>));
    reg(200, reinterpret_cast<void*>(Callback<200>));
    reg(400, reinterpret_cast<void*>(Callback<400>));
    reg(500, reinterpret_cast<void*>(Callback<500>));
    reg(700, reinterpret_cast<void*>(Callback<700>));
    reg(12345, reinterpret_cast<void*>(Callback<-1>));
    Resolve<void (*)(void*)>("RegLogHandle")(reinterpret_cast<void*>(LogHandler));
    QVERIFY(g_log.startsWith("GnssUtils "));
    Decode(Frame(gnss::RptAck, QByteArray(4, '\0')) + Frame(gnss::RptSleep, "\1"));
    Decode(Sentence("GPGLL,4807.038,N,01131.000,E,101110,A") + Sentence("GPGLL,4807.038,N,01131.000,E,101111,A"));
    QCOMPARE(g_called, (QVector<int>{400, 500, 0, 700, 200, 200}));
    Decode("$GPGLL,x*00\r\n");
    QVERIFY(g_log.contains("wrong checksum"));
    QVERIFY(!g_log.contains('?'));
    g_decode(nullptr, 5);
    reg(0, nullptr);
    g_called.clear();
    Decode(Sentence("GPTXT,01,01,02,x"));
    QVERIFY(g_called.isEmpty());
}

void BoundaryTest::InitForgetsEverything()
{
    const auto init = Resolve<int (*)()>("InitGnssUtils");
    const auto reg = Resolve<void (*)(quint32, void*)>("RegGnssCallbacks");
    init();
    reg(0, reinterpret_cast<void*>(Callback<0>));
    Decode("$GPTXT,01,01,02,ha");
    init();
    reg(0, reinterpret_cast<void*>(Callback<0>));
    // The second half of an old sentence does not complete it, and callbacks of before are gone.
    Decode(Sentence("GPTXT,01,01,02,half").mid(18));
    QVERIFY(g_called.isEmpty());
    init();
    Decode(Sentence("GPTXT,01,01,02,x"));
    QVERIFY(g_called.isEmpty());
}

void BoundaryTest::UnloadsAndLoadsAgain()
{
    QCOMPARE(dlclose(m_library), 0);
    QVERIFY2(dlopen(m_path.constData(), RTLD_NOW | RTLD_NOLOAD) == nullptr, "the library stays loaded");
    Load();
    QCOMPARE(Resolve<int (*)()>("InitGnssUtils")(), 0);
}

QTEST_GUILESS_MAIN(BoundaryTest)
#include "BoundaryTest.moc"
