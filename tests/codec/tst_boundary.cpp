// SPDX-License-Identifier: MIT
#include "Collector.h"

#include <QProcess>
#include <QRegularExpression>
#include <QtTest>

#include <dlfcn.h>

namespace {

QVector<int> g_called;
QByteArray g_log;

template <int Number> void Callback(const void* data, int length)
{
    if ((data == nullptr) == (length == 0)) {
        g_called.append(Number);
    }
}

[[gnu::format(printf, 4, 0)]] void LogHandler(const char* file, int line, const char* function, const char* format,
                                              va_list arguments)
{
    g_log += QString::vasprintf(format, arguments).toUtf8();
    g_log += file != nullptr && function != nullptr && line > 0 ? "\n" : "?\n";
}

} // namespace

class BoundaryTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        m_library = dlopen(m_path.constData(), RTLD_NOW | RTLD_LOCAL);
        QVERIFY2(m_library != nullptr, dlerror());
    }

    void ExportsAreExactlyTheContract()
    {
        QProcess nm;
        nm.start("nm", {"-D", "--defined-only", QString::fromUtf8(m_path)});
        QVERIFY2(nm.waitForFinished() && nm.exitCode() == 0, "nm comes with the compiler");
        QStringList names;
        for (const QString& line : QString(nm.readAllStandardOutput()).split('\n', Qt::SkipEmptyParts)) {
            names.append(line.section(' ', -1));
        }
        names = names.filter(QRegularExpression("^(?!.*(asan|odr))"));
        names.sort();
        QCOMPARE(names,
                 (QStringList{"DeinitGnss", "GetLibVersion", "GnssDecode", "GnssEncode", "GnssSleepSwitch",
                              "InitGnssUtils", "Lla2Enu", "RegGnssCallbacks", "RegLogHandle", "SetChipType"}));
    }

    void CallbacksAreServed()
    {
        // Before the initialisation nothing is, and no call does harm.
        quint8 out[32];
        Register<0>();
        Decode(Sentence("GPTXT,01,01,02,x"));
        Call("GnssDecode", static_cast<const quint8*>(nullptr), 5U);
        Call("RegLogHandle", static_cast<void*>(nullptr));
        Call("GnssSleepSwitch", 0U);
        Call("DeinitGnss", 7U);
        Call("SetChipType", 31U);
        const auto encode = Resolve<int (*)(quint32, const void*, quint32, void*, quint32)>("GnssEncode");
        QCOMPARE(encode(2, nullptr, 0, out, 32), -1);
        QVERIFY(Resolve<int (*)()>("GetLibVersion")() > 0);
        QVERIFY(g_called.isEmpty());

        QCOMPARE(Resolve<int (*)()>("InitGnssUtils")(), 0);
        Register<0, 200, 400, 500, 700, 12345>();
        Call("RegLogHandle", reinterpret_cast<void*>(LogHandler));
        QVERIFY(g_log.startsWith("GnssUtils "));
        Decode(Frame(protocol::RptAck, QByteArray(4, '\0')) + Frame(protocol::RptSleep, "\1"));
        Decode(Sentence("GPGLL,4807.038,N,01131.000,E,101110,A") +
               Sentence("GPGLL,4807.038,N,01131.000,E,101111,A"));
        QCOMPARE(g_called, (QVector<int>{400, 500, 0, 700, 200, 200}));
        Decode("$GPGLL,x*00\r\n");
        QVERIFY(g_log.contains("wrong checksum") && !g_log.contains('?'));
        Call("GnssDecode", static_cast<const quint8*>(nullptr), 5U);
        QCOMPARE(encode(2, nullptr, 0, out, 32), 13);
        g_called.clear();
        Call("RegGnssCallbacks", 0U, static_cast<void*>(nullptr));
        Decode(Sentence("GPTXT,01,01,02,x"));
        QVERIFY(g_called.isEmpty());
    }

    void InitForgetsEverything()
    {
        Call("InitGnssUtils");
        Register<0>();
        Decode("$GPTXT,01,01,02,ha");
        Call("InitGnssUtils");
        Register<0>();
        // The second half of an old sentence does not complete it, and callbacks of
        // before are gone.
        Decode(Sentence("GPTXT,01,01,02,half").mid(18));
        Call("InitGnssUtils");
        Decode(Sentence("GPTXT,01,01,02,x"));
        QVERIFY(g_called.isEmpty());

        QCOMPARE(dlclose(m_library), 0);
        QVERIFY2(dlopen(m_path.constData(), RTLD_NOW | RTLD_NOLOAD) == nullptr, "the library stays loaded");
        initTestCase();
        QCOMPARE(Resolve<int (*)()>("InitGnssUtils")(), 0);
    }

private:
    template <typename Function> Function Resolve(const char* name)
    {
        return reinterpret_cast<Function>(dlsym(m_library, name));
    }
    template <typename... Arguments> void Call(const char* name, Arguments... arguments)
    {
        Resolve<void (*)(Arguments...)>(name)(arguments...);
    }
    template <quint32... Numbers> void Register()
    {
        (Call("RegGnssCallbacks", Numbers, reinterpret_cast<void*>(Callback<int(Numbers)>)), ...);
    }
    void Decode(const QByteArray& bytes)
    {
        Call("GnssDecode", reinterpret_cast<const quint8*>(bytes.constData()), quint32(bytes.size()));
    }

    const QByteArray m_path = QByteArrayLiteral(GNSS_BUILD_BIN "/Source-Datas/bin/GnssUtils.dll");
    void* m_library = nullptr;
};

QTEST_GUILESS_MAIN(BoundaryTest)
#include "tst_boundary.moc"
