#include "FakeCodec.h"
#include "LogCatcher.h"

#include "codec/CallbackRouting.h"
#include "codec/ClassGnss.h"
#include "codec/RecordTarget.h"

#include "HostSupportConfig.h"

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
        notes.append(QString::fromLatin1(name) + ' ' +
                     QString::fromLatin1(QByteArray(static_cast<const char*>(data), length)));
    }
};

int Encode(quint32 id, const QByteArray& payload, QByteArray* frame)
{
    QByteArray out(ClassGnss::maxFrameLength, '\0');
    const int length = ClassGnss::GnssEncode(id, payload.constData(), static_cast<quint32>(payload.size()),
                                             out.data(), ClassGnss::maxFrameLength);
    *frame = length > 0 ? out.left(length) : QByteArray();
    return length;
}

} // namespace

class TestClassGnss : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        ClassGnss::UnloadCodec();
        PublishRecordTarget(nullptr);
        HostSupportConfig::SetProduct(0);
        FakeCodec::Remove();
    }

    void MissingLibraryFailsEveryWrapper()
    {
        FakeCodec::Remove();
        const LogCatcher log;
        ClassGnss::InitGnssUtils();
        QCOMPARE(log.Lines(), QStringList{"Load Gnss Dll fail!"});
        QVERIFY(!ClassGnss::CodecLoaded());
        QByteArray frame;
        QCOMPARE(Encode(3, "abc", &frame), -1);
    }

    void EachMissingSymbolHasItsText_data()
    {
        QTest::addColumn<QString>("symbol");
        QTest::addColumn<QString>("text");
        const QList<QPair<const char*, const char*>> rows = {
            {"InitGnssUtils", "InitGnssTool fail!"}, {"RegGnssCallbacks", "GnssRegCallBack fail!"},
            {"RegLogHandle", "RegLogHandle fail!"},  {"GetLibVersion", "GnssUtilsVersion fail!"},
            {"SetChipType", "SetChipSet failed!"},   {"GnssDecode", "GnssRegCallBack fail!"},
            {"GnssEncode", "GnssRegCallBack fail!"}, {"GnssSleepSwitch", "GnssUiSleepSwitch failed!"},
            {"Lla2Enu", "GnssLla2Enu fail!"},        {"DeinitGnss", "UnregCallBack fail!"},
        };
        for (const auto& row : rows) {
            QTest::newRow(row.first) << row.first << row.second;
        }
    }

    void EachMissingSymbolHasItsText()
    {
        QFETCH(QString, symbol);
        QFETCH(QString, text);
        QVERIFY(FakeCodec::Install(symbol));
        const LogCatcher log;
        // Every wrapper is pressed; only the one without its symbol may complain, and the others must work.
        ClassGnss::InitGnssUtils();
        ClassGnss::RegGnssCallbacks(0, nullptr);
        ClassGnss::RegLogHandle(nullptr);
        const int version = ClassGnss::GetLibVersion();
        ClassGnss::SetChipType(27);
        const quint8 byte = 1;
        ClassGnss::GnssDecode(&byte, 1);
        QByteArray frame;
        const int length = Encode(3, "abc", &frame);
        ClassGnss::GnssSleepSwitch(1);
        const double reference[3] = {1, 2, 3};
        const double position[3] = {2, 4, 6};
        double enu[3] = {0, 0, 0};
        ClassGnss::Lla2Enu(reference, position, enu);
        ClassGnss::DeinitGnss(5);

        QStringList failures = log.Lines();
        failures = failures.filter("fail");
        QCOMPARE(failures, QStringList{text});
        QCOMPARE(version, symbol == "GetLibVersion" ? 0 : 4711);
        QCOMPARE(length, symbol == "GnssEncode" ? -1 : 3);
        QCOMPARE(enu[2], symbol == "Lla2Enu" ? 0.0 : 3.0);
        const QStringList calls = FakeCodec::Calls();
        for (const char* call : {"InitGnssUtils 0", "RegGnssCallbacks 0", "RegLogHandle 0", "SetChipType 27",
                                 "GnssDecode 1", "GnssEncode 3", "GnssSleepSwitch 1", "DeinitGnss 5"}) {
            QCOMPARE(calls.contains(call), !QString(call).startsWith(symbol));
        }
    }

    void RefusedInitialisationIsLogged()
    {
        QVERIFY(FakeCodec::Install());
        const LogCatcher log;
        qputenv("FAKE_INIT_RESULT", "1");
        ClassGnss::InitGnssUtils();
        qunsetenv("FAKE_INIT_RESULT");
        QCOMPARE(log.Lines(), QStringList{"InitGnssTool fail!"});
        QCOMPARE(ClassGnss::GetLibVersion(), 4711);
    }

    void UnloadedCodecStaysUnloaded()
    {
        QVERIFY(FakeCodec::Install());
        ClassGnss::InitGnssUtils();
        ClassGnss::UnloadCodec();
        const LogCatcher log;
        const quint8 byte = 1;
        ClassGnss::GnssDecode(&byte, 1);
        QByteArray frame;
        QCOMPARE(Encode(3, "abc", &frame), -1);
        QVERIFY(!ClassGnss::CodecLoaded());
        QCOMPARE(log.Lines(), (QStringList{"GnssRegCallBack fail!", "GnssRegCallBack fail!"}));
    }

    void CallbacksAreRegisteredInOrderAndRouted()
    {
        QVERIFY(FakeCodec::Install());
        ClassGnss::InitGnssUtils();
        RegisterCallbacks();
        QStringList expected = {"InitGnssUtils 0"};
        for (const int type : {0, 100, 102, 200, 103, 300, 101, 3, 500, 501, 600, 601, 400, 700, 701}) {
            expected.append(QStringLiteral("RegGnssCallbacks %1").arg(type));
        }
        expected.append("RegLogHandle 0");
        QCOMPARE(FakeCodec::Calls(), expected);

        FakeCodec::Emit(0, "dropped"); // nothing is published yet
        NotingTarget target;
        PublishRecordTarget(&target);
        const QList<QPair<quint32, QString>> routes = {
            {0, "nmea x"},      {3, "package x"},  {100, "cn0 x"},     {101, "position x"}, {102, "satpos x"},
            {103, "compass x"}, {200, "data x"},   {300, "message x"}, {400, "ack x"},      {500, "wakeup"},
            {501, "uart x"},    {600, "kpifix x"}, {601, "kpisat x"},  {700, "firstfix"},   {701, "hisinfo x"}};
        for (const auto& route : routes) {
            FakeCodec::Emit(route.first, "x");
            QCOMPARE(target.notes, QStringList{route.second});
            target.notes.clear();
        }
    }

    void LogHandlerFormatsAndCuts()
    {
        QVERIFY(FakeCodec::Install());
        ClassGnss::InitGnssUtils();
        RegisterCallbacks();
        auto fakeLog = FakeCodec::Symbol<void (*)(const char*, int, const char*, const char*, ...)>("FakeLog");
        QVERIFY(fakeLog != nullptr);
        const LogCatcher log;
        fakeLog("a.cpp", 12, "Run", "%d frames of \"%s\"", 3, "x");
        const std::string large(12000, 'y');
        fakeLog("b.cpp", 1, "Run", "%s", large.c_str());
        fakeLog(nullptr, 0, nullptr, "z");
        QCOMPARE(log.Lines().size(), 3);
        QCOMPARE(log.Lines().at(0), QStringLiteral("[a.cpp:12] Run: 3 frames of \"x\""));
        QCOMPARE(log.Lines().at(1), QStringLiteral("[b.cpp:1] Run: ") + QString(9999, 'y'));
        QCOMPARE(log.Lines().at(2), QStringLiteral("[:0] : z"));
    }

    void EncodeWrapsForTheAtProductOnly()
    {
        QVERIFY(FakeCodec::Install());
        ClassGnss::InitGnssUtils();
        QByteArray frame;
        QCOMPARE(Encode(3, QByteArray::fromHex("7e04ff00"), &frame), 4);
        QCOMPARE(frame, QByteArray::fromHex("7e04ff00"));

        HostSupportConfig::SetProduct(31);
        const LogCatcher log;
        QCOMPARE(Encode(3, QByteArray::fromHex("7e04ff00"), &frame), 21);
        QCOMPARE(frame, QByteArray("AT+GNSSHEX=7e04ff00\r\n"));
        QCOMPARE(log.Lines(), (QStringList{"ClassGnss::GnssEncode --- ret:", "ClassGnss::GnssEncode --- ret:21"}));

        // A ready frame passes as it is.
        QCOMPARE(Encode(512, "AT+GNSSSTOP\r\n", &frame), 13);
        QCOMPARE(frame, QByteArray("AT+GNSSSTOP\r\n"));

        // The longest frame whose text fits, and one more.
        QCOMPARE(Encode(257, QByteArray(7493, 'a'), &frame), 14999);
        QCOMPARE(Encode(257, QByteArray(7494, 'a'), &frame), 0);
        QVERIFY(log.Lines().contains("AtCmdStr len error"));
    }

    void EncodeFailuresStayFailures()
    {
        QVERIFY(FakeCodec::Install());
        ClassGnss::InitGnssUtils();
        HostSupportConfig::SetProduct(31);
        QByteArray frame;
        FakeCodec::SetEncodeResult(-7);
        QCOMPARE(Encode(3, "abc", &frame), -7);
        // A codec that claims more than the buffer holds is not believed.
        FakeCodec::SetEncodeResult(15001);
        QCOMPARE(Encode(3, "abc", &frame), -1);
        HostSupportConfig::SetProduct(0);
        QCOMPARE(Encode(3, "abc", &frame), -1);
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
