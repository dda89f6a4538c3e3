#include "Acknowledge.h"
#include "BoxAnswerer.h"
#include "FileDialogAnswerer.h"
#include "LogCatcher.h"

#include "assist/SenceReplay.h"

#include <QComboBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QtTest>

namespace {

/// A library of two scenes, one with files, and a window that shows it.
class Scenes {
public:
    Scenes()
    {
        Write("sence.json", R"({"sence":[
            {"name":"bridge","longitude":"116.5","latitude":"-39.25","altitude":"44","utc_start":"2025-03-21",
             "unix_start_time":"1742536800"},
            {"name":"tunnel","longitude":"1","latitude":"2","altitude":"3","utc_start":"u",
             "unix_start_time":"99999999999999999999"}]})");
        QDir(folder.path()).mkdir("bridge");
        for (const char* name :
             {"ION_CUT.bin", "GPS_PGNSS_REPLAY_FILE", "BDS_PGNSS_REPLAY_FILE", "QZSS_PGNSS_REPLAY_FILE"}) {
            Write("bridge/" + QString(name), name);
        }
    }

    void Write(const QString& name, const QByteArray& content) const
    {
        QFile file(folder.filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    void Choose(SenceReplay& window) const
    {
        const FileDialogAnswerer answerer({folder.path()});
        window.SlotSelectSencePath();
    }

    QTemporaryDir folder;
};

QString Shown(const SenceReplay& window, const char* name)
{
    return window.findChild<QTextEdit*>(name)->toPlainText();
}

/// The codec's sleep switch and encodings in their order: "0", "1" and ids.
QString Steps()
{
    QStringList steps = FakeCodec::Calls().filter(QRegularExpression("GnssSleepSwitch|GnssEncode"));
    steps.replaceInStrings(QRegularExpression("^.* "), QString());
    return steps.join(' ');
}

void Press(const SenceReplay& window, const char* button)
{
    window.findChild<QPushButton*>(button)->click();
}

} // namespace

class TestSceneReplay : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void ALibraryIsShownAndASecondOneAppended()
    {
        SenderTest test;
        const Scenes scenes;
        SenceReplay window;
        scenes.Choose(window);
        auto* list = window.findChild<QComboBox*>("m_senceList");
        QCOMPARE(list->count(), 2);
        QCOMPARE(Shown(window, "m_sencePath"), scenes.folder.path());
        QCOMPARE(Shown(window, "m_posLon") + Shown(window, "m_posLat") + Shown(window, "m_posAlt"),
                 QString("116.5-39.2544"));
        list->setCurrentIndex(1);
        QCOMPARE(Shown(window, "m_utcTime") + Shown(window, "m_unixTime"), QString("u99999999999999999999"));
        scenes.Choose(window);
        QCOMPARE(list->count(), 4);
        QCOMPARE(list->currentIndex(), 0);
        QCOMPARE(Shown(window, "m_unixTime"), QString("1742536800"));
        list->setCurrentIndex(3);
        QCOMPARE(Shown(window, "m_unixTime"), QString());

        // A library that fails to load leaves the scenes as they were.
        BoxAnswerer answerer;
        list->setCurrentIndex(0);
        scenes.Write("sence.json", "{\"sence\":");
        scenes.Choose(window);
        QVERIFY(QFile::remove(scenes.folder.filePath("sence.json")));
        scenes.Choose(window);
        QCOMPARE(answerer.boxes, (QStringList{"提示|场景json文件内容为空！", "提示|场景json文件打开失败！"}));
        list->setCurrentIndex(1);
        QCOMPARE(Shown(window, "m_posLon"), QString("1"));

        const FileDialogAnswerer cancel({});
        window.SlotSelectSencePath();
        QCOMPARE(answerer.boxes.mid(2), QStringList{"提示|选择路径不存在!"});
    }

    void TimeIsTwoItemsOfTheRecord()
    {
        SenderTest test;
        const Scenes scenes;
        SenceReplay window;
        test.Listen(&window);
        AcknowledgeEach(test);
        scenes.Choose(window);
        window.findChild<QTextEdit*>("m_unixTime")->setPlainText("5");
        Press(window, "m_injectTime");
        QCOMPARE(Steps(), QString("0 1028 1 0 513 1"));
        QCOMPARE(test.frames.value(0).toHex(), QByteArray("e907031506000000") + "00000100");
        QCOMPARE(test.frames.value(1).toHex(), QByteArray("3601") + "e0eb0600" + "53000000" + "01000000");
        QCOMPARE(test.Status(), (QStringList{"PGNSS注入UTC时间命令发送成功", "注入PGNSS GPS时间命令发送成功"}));
        // What 64 bits do not hold reads as 0.
        window.findChild<QComboBox*>("m_senceList")->setCurrentIndex(1);
        Press(window, "m_injectTime");
        QCOMPARE(test.frames.value(3).left(6).toHex(), QByteArray("b301005b0000"));
    }

    void AnEmptyListSendsADefaultRecord()
    {
        SenderTest test;
        SenceReplay window;
        test.Listen(&window);
        AcknowledgeEach(test);
        Press(window, "m_injectTime");
        Press(window, "m_injectPos");
        QCOMPARE(test.frames.value(0).toHex(), QByteArray("b207010100000000") + "00000100");
        QCOMPARE(test.frames.value(1).left(6).toHex(), QByteArray("b301005b0000"));
        QCOMPARE(test.frames.value(2), QByteArray(16, '\0') + QByteArray::fromHex("0a00000000"));
        Press(window, "m_injectIon");
        QCOMPARE(test.frames.size(), 3);
    }

    void PositionAndIonosphere()
    {
        SenderTest test;
        const Scenes scenes;
        SenceReplay window;
        test.Listen(&window);
        AcknowledgeEach(test);
        scenes.Choose(window);
        Press(window, "m_injectPos");
        Press(window, "m_injectIon");
        QCOMPARE(Steps(), QString("0 514 1 0 522 1"));
        QCOMPARE(test.frames.value(0).toHex(), QByteArray("0000000000205d400000000000a043c00a00000000"));
        QCOMPARE(test.frames.value(1), QByteArray("ION_CUT.bin"));
        QCOMPARE(test.Status(),
                 (QStringList{"注入PGNSS 参考位置命令发送成功", "注入高精度电离层参数命令发送成功"}));
        // Without its file, and when the codec refuses it.
        window.findChild<QComboBox*>("m_senceList")->setCurrentIndex(1);
        const LogCatcher log;
        Press(window, "m_injectIon");
        QVERIFY(log.Lines().contains("Inject hign precision ionex fail! Fail to open file"));
        window.findChild<QComboBox*>("m_senceList")->setCurrentIndex(0);
        FakeCodec::SetEncodeResult(-1);
        Press(window, "m_injectIon");
        Press(window, "m_injectPos");
        QCOMPARE(test.Status().mid(2), (QStringList{"PGNSS GPS EPH文件 打开失败！", "高精度电离层 组包失败！"}));
        QVERIFY(log.Lines().contains("cut ionex retLen err: -1"));
        QVERIFY(Steps().endsWith("1 0 1 0 522 1 0 514 1"));
    }

    void EphemeridesGoOutEachForItself()
    {
        SenderTest test;
        const Scenes scenes;
        SenceReplay window;
        test.Listen(&window);
        AcknowledgeEach(test, 3);
        scenes.Choose(window);
        Press(window, "m_injectEph");
        QCOMPARE(Steps(), QString("0 515 1 0 1 0 516 1 0 1 0 516 1"));
        QCOMPARE(test.frames,
                 (QList<QByteArray>{"GPS_PGNSS_REPLAY_FILE", "BDS_PGNSS_REPLAY_FILE", "QZSS_PGNSS_REPLAY_FILE"}));
        QCOMPARE(test.Status(), (QStringList{"注入PGNSS GPS星历命令错误", "PGNSS GLO EPH文件 打开失败！",
                                             "注入PGNSS BDS星历命令错误", "PGNSS GAL EPH文件 打开失败！",
                                             "注入PGNSS QZS星历命令错误"}));
        QVERIFY(test.LastIsRed());
    }

    void ASilentReceiverIsTold()
    {
        SenderTest test;
        SenceReplay window;
        test.Listen(&window);
        Press(window, "m_injectPos");
        QCOMPARE(test.Status(), QStringList{"PGNSS注入位置 ACK超时"});
        QCOMPARE(Global::ackState, 4);
        QCOMPARE(Steps(), QString("0 514 1"));
    }

    void TheSleepSwitchIsPutBackWhenTheWindowGoes()
    {
        SenderTest test;
        const Scenes scenes;
        QPointer<SenceReplay> window = new SenceReplay;
        test.Listen(window.data());
        scenes.Choose(*window);
        test.acknowledge = [window] { QTimer::singleShot(20, [window] { delete window; }); };
        window->SlotInjectEph();
        QVERIFY(window.isNull());
        QCOMPARE(Steps(), QString("0 515 1"));
        QCOMPARE(Global::ackState, 4);

        window = new SenceReplay;
        test.Listen(window.data());
        test.acknowledge = [window] { delete window; };
        window->SlotInjectTime();
        QCOMPARE(Steps(), QString("0 515 1 0 1028 1"));
    }
};

QTEST_MAIN(TestSceneReplay)
#include "tst_scenereplay.moc"
