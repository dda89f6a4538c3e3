// SPDX-License-Identifier: MIT
#include "FakeCodec.h"
#include "LogCatcher.h"

#include "bridge/CallbackRouting.h"
#include "bridge/ClassGnss.h"
#include "bridge/RecordTarget.h"

#include "host/support/HostSupportConfig.h"

#include <QRegularExpression>
#include <QtTest>

namespace {

/// Notes which entry a record reached, and with what.
class NotingTarget : public RecordTarget {
public:
    QStringList notes;

    void OnNmea(const void* d, int n) override { Note("nmea", d, n); }
    void OnPackage(const void* d, int n) override { Note("package", d, n); }
    void OnCn0(const void* d, int n) override { Note("cn0", d, n); }
    void OnPosition(const void* d, int n) override { Note("position", d, n); }
    void OnSatPos(const void* d, int n) override { Note("satpos", d, n); }
    void OnCompass(const void* d, int n) override { Note("compass", d, n); }
    void OnData(const void* d, int n) override { Note("data", d, n); }
    void OnMessage(const void* d, int n) override { Note("message", d, n); }
    void OnAck(const void* d, int n) override { Note("ack", d, n); }
    void OnSleepWakeup() override { notes.append("wakeup"); }
    void OnUartSend(const void* d, int n) override { Note("uart", d, n); }
    void OnKpiPosition(const void* d, int n) override { Note("kpifix", d, n); }
    void OnKpiSatellite(const void* d, int n) override { Note("kpisat", d, n); }
    void OnFirstFix() override { notes.append("firstfix"); }
    void OnHisInfo(const void* d, int n) override { Note("hisinfo", d, n); }

private:
    void Note(const char* name, const void* data, int length)
    {
        notes.append(QString(name) + ' ' + QByteArray(static_cast<const char*>(data), length));
    }
};

QByteArray frame; // of the last Encode

int Encode(quint32 id, const QByteArray& payload)
{
    QByteArray out(ClassGnss::maxFrameLength, '\0');
    const int length = ClassGnss::GnssEncode(id, payload.constData(), static_cast<quint32>(payload.size()),
                                             out.data(), ClassGnss::maxFrameLength);
    frame = out.left(qMax(0, length));
    return length;
}

} // namespace

class TestClassGnss : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QVERIFY(FakeCodec::Install());
        ClassGnss::InitGnssUtils();
    }

    void cleanup()
    {
        ClassGnss::UnloadCodec();
        PublishRecordTarget(nullptr);
        HostSupportConfig::SetProduct(0);
    }

    void WithoutItsLibraryEveryWrapperFails()
    {
        ClassGnss::UnloadCodec();
        const LogCatcher log;
        const quint8 byte = 1;
        ClassGnss::GnssDecode(&byte, 1);
        QCOMPARE(Encode(3, "abc"), -1);
        QVERIFY(!ClassGnss::CodecLoaded()); // nor was it loaded again
        FakeCodec::Remove();
        ClassGnss::InitGnssUtils();
        QVERIFY(!ClassGnss::CodecLoaded());
        QCOMPARE(log.Lines(),
                 (QStringList{"GnssRegCallBack fail!", "GnssRegCallBack fail!", "Load Gnss Dll fail!"}));
    }

    void EachMissingSymbolHasItsText()
    {
        const QPair<QString, QString> rows[] = {
            {"InitGnssUtils", "InitGnssTool fail!"}, {"RegGnssCallbacks", "GnssRegCallBack fail!"},
            {"RegLogHandle", "RegLogHandle fail!"},  {"GetLibVersion", "GnssUtilsVersion fail!"},
            {"SetChipType", "SetChipSet failed!"},   {"GnssDecode", "GnssRegCallBack fail!"},
            {"GnssEncode", "GnssRegCallBack fail!"}, {"GnssSleepSwitch", "GnssUiSleepSwitch failed!"},
            {"Lla2Enu", "GnssLla2Enu fail!"},        {"DeinitGnss", "UnregCallBack fail!"},
        };
        const QStringList calls = {"InitGnssUtils 0", "RegGnssCallbacks 0", "RegLogHandle 0",    "SetChipType 27",
                                   "GnssDecode 1",    "GnssEncode 3",       "GnssSleepSwitch 1", "DeinitGnss 5"};
        for (const auto& [symbol, text] : rows) {
            ClassGnss::UnloadCodec();
            QVERIFY(FakeCodec::Install(symbol));
            const LogCatcher log;
            // Every wrapper is pressed; only the one without its symbol may complain, and the others must work.
            ClassGnss::InitGnssUtils();
            ClassGnss::RegGnssCallbacks(0, nullptr);
            ClassGnss::RegLogHandle(nullptr);
            QCOMPARE(ClassGnss::GetLibVersion(), symbol == "GetLibVersion" ? 0 : 4711);
            ClassGnss::SetChipType(27);
            const quint8 byte = 1;
            ClassGnss::GnssDecode(&byte, 1);
            QCOMPARE(Encode(3, "abc"), symbol == "GnssEncode" ? -1 : 3);
            ClassGnss::GnssSleepSwitch(1);
            const double reference[3] = {1, 2, 3};
            const double position[3] = {2, 4, 6};
            double enu[3] = {0, 0, 0};
            ClassGnss::Lla2Enu(reference, position, enu);
            QCOMPARE(enu[2], symbol == "Lla2Enu" ? 0.0 : 3.0);
            ClassGnss::DeinitGnss(5);
            QCOMPARE(log.Lines().filter("fail"), QStringList{text});
            QCOMPARE(FakeCodec::Calls(), calls.filter(QRegularExpression("^(?!" + symbol + ')')));
        }
    }

    void RefusedInitialisationIsLogged()
    {
        ClassGnss::UnloadCodec();
        const LogCatcher log;
        qputenv("FAKE_INIT_RESULT", "1");
        ClassGnss::InitGnssUtils();
        qunsetenv("FAKE_INIT_RESULT");
        QCOMPARE(log.Lines(), QStringList{"InitGnssTool fail!"});
        QCOMPARE(ClassGnss::GetLibVersion(), 4711);
    }

    void CallbacksAreRegisteredInOrderAndRouted()
    {
        const QList<QPair<quint32, QString>> routes = {
            {0, "nmea x"},      {100, "cn0 x"},      {102, "satpos x"}, {200, "data x"},   {103, "compass x"},
            {300, "message x"}, {101, "position x"}, {3, "package x"},  {500, "wakeup"},   {501, "uart x"},
            {600, "kpifix x"},  {601, "kpisat x"},   {400, "ack x"},    {700, "firstfix"}, {701, "hisinfo x"}};
        RegisterCallbacks();
        FakeCodec::Emit(0, "dropped"); // nothing is published yet
        NotingTarget target;
        PublishRecordTarget(&target);
        QStringList calls = {"InitGnssUtils 0"};
        QStringList notes;
        for (const auto& route : routes) {
            calls.append(QStringLiteral("RegGnssCallbacks %1").arg(route.first));
            notes.append(route.second);
            FakeCodec::Emit(route.first, "x");
        }
        QCOMPARE(FakeCodec::Calls(), calls << "RegLogHandle 0");
        QCOMPARE(target.notes, notes);
    }

    void LogHandlerFormatsAndCuts()
    {
        RegisterCallbacks();
        auto fakeLog = FakeCodec::Symbol<void (*)(const char*, int, const char*, const char*, ...)>("FakeLog");
        const LogCatcher log;
        fakeLog("a.cpp", 12, "Run", "%d frames of \"%s\"", 3, "x");
        fakeLog("b.cpp", 1, "Run", "%s", std::string(12000, 'y').c_str());
        fakeLog(nullptr, 0, nullptr, "z");
        QCOMPARE(log.Lines(), (QStringList{"[a.cpp:12] Run: 3 frames of \"x\"",
                                           "[b.cpp:1] Run: " + QString(9999, 'y'), "[:0] : z"}));
    }

    void EncodeWrapsForTheAtProductOnly()
    {
        const QByteArray bytes = QByteArray::fromHex("7e04ff00");
        QCOMPARE(Encode(3, bytes), 4);
        QCOMPARE(frame, bytes);

        HostSupportConfig::SetProduct(31);
        const LogCatcher log;
        QCOMPARE(Encode(3, bytes), 21);
        QCOMPARE(frame, QByteArray("AT+GNSSHEX=7e04ff00\r\n"));
        QCOMPARE(log.Lines(), (QStringList{"ClassGnss::GnssEncode --- ret:", "ClassGnss::GnssEncode --- ret:21"}));

        // A ready frame passes as it is.
        QCOMPARE(Encode(512, "AT+GNSSSTOP\r\n"), 13);
        QCOMPARE(frame, QByteArray("AT+GNSSSTOP\r\n"));

        // The longest frame whose text fits, and one more.
        QCOMPARE(Encode(257, QByteArray(7493, 'a')), 14999);
        QCOMPARE(Encode(257, QByteArray(7494, 'a')), 0);
        QVERIFY(log.Lines().contains("AtCmdStr len error"));

        FakeCodec::SetEncodeResult(-7);
        QCOMPARE(Encode(3, "abc"), -7);
        // A codec that claims more than the buffer holds is not believed.
        FakeCodec::SetEncodeResult(15001);
        QCOMPARE(Encode(3, "abc"), -1);
        HostSupportConfig::SetProduct(0);
        QCOMPARE(Encode(3, "abc"), -1);
    }

    void FirstFixTextDeductsTheFixedPart()
    {
        const QDateTime start(QDate(2026, 1, 5), QTime(10, 0), Qt::UTC);
        QCOMPARE(FirstFixText(start, start.addMSecs(31500)), QStringLiteral("31.38s"));
        QCOMPARE(FirstFixText(start, start.addMSecs(100)), QStringLiteral("-0.02s"));
        QCOMPARE(FirstFixText(start, start.addMSecs(125)), QStringLiteral("0.01s"));
    }
};

QTEST_GUILESS_MAIN(TestClassGnss)
#include "tst_classgnss.moc"
