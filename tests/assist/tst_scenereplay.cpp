// SPDX-License-Identifier: MIT
#include "Acknowledge.h"
#include "BoxAnswerer.h"
#include "FileDialogAnswerer.h"
#include "LogCatcher.h"

#include "assist/SenceReplay.h"

#include <QComboBox>
#include <QTemporaryDir>
#include <QtTest>

namespace {

/// A window on an open line and a library of two scenes, one with files.
class Scenes : public OpenLine<SenceReplay> {
public:
    explicit Scenes(quint16 status = 0) : OpenLine(status)
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

    /// Chooses the library, or none.
    void Choose(bool cancel = false) const
    {
        const FileDialogAnswerer answerer(cancel ? QStringList() : QStringList{folder.path()});
        window->SlotSelectSencePath();
    }

    QComboBox* List() const { return window->findChild<QComboBox*>("m_senceList"); }
    QString Shown(const char* name) const { return window->findChild<QTextEdit*>(name)->toPlainText(); }

    QTemporaryDir folder;
};

/// The codec's sleep switch and encodings in their order: "0", "1" and ids.
QString Steps()
{
    QStringList steps = FakeCodec::Calls().filter(QRegularExpression("GnssSleepSwitch|GnssEncode"));
    steps.replaceInStrings(QRegularExpression("^.* "), QString());
    return steps.join(' ');
}

} // namespace

class TestSceneReplay : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void ALibraryIsShownAndASecondOneAppended()
    {
        const Scenes scenes;
        scenes.Choose();
        QComboBox* list = scenes.List();
        QCOMPARE(list->count(), 2);
        QCOMPARE(scenes.Shown("m_sencePath"), scenes.folder.path());
        QCOMPARE(scenes.Shown("m_posLon") + scenes.Shown("m_posLat") + scenes.Shown("m_posAlt"),
                 QString("116.5-39.2544"));
        list->setCurrentIndex(1);
        QCOMPARE(scenes.Shown("m_utcTime") + scenes.Shown("m_unixTime"), QString("u99999999999999999999"));
        scenes.Choose();
        QCOMPARE(list->count(), 4);
        QCOMPARE(list->currentIndex(), 0);
        QCOMPARE(scenes.Shown("m_unixTime"), QString("1742536800"));
        list->setCurrentIndex(3);
        QCOMPARE(scenes.Shown("m_unixTime"), QString());

        // A library that fails to load leaves the scenes as they were.
        BoxAnswerer answerer;
        list->setCurrentIndex(0);
        scenes.Write("sence.json", "{\"sence\":");
        scenes.Choose();
        QVERIFY(QFile::remove(scenes.folder.filePath("sence.json")));
        scenes.Choose();
        list->setCurrentIndex(1);
        QCOMPARE(scenes.Shown("m_posLon"), QString("1"));
        scenes.Choose(true);
        QCOMPARE(answerer.boxes, (QStringList{"提示|场景json文件内容为空！", "提示|场景json文件打开失败！",
                                              "提示|选择路径不存在!"}));
    }

    void AHugeLibraryIsShown()
    {
        const Scenes scenes;
        QByteArray json = "{\"sence\":[";
        for (int i = 0; i < 20000; ++i) {
            json += "{\"name\":\"" + QByteArray(100, 'n') + "\",\"longitude\":7},";
        }
        scenes.Write("sence.json", json + "{\"name\":\"last\"}]}");
        scenes.Choose();
        QCOMPARE(scenes.List()->count(), 20001);
        QCOMPARE(scenes.List()->itemText(20000), QString("last"));
    }

    void TimeIsTwoItemsOfTheRecord()
    {
        const Scenes scenes;
        scenes.Choose();
        scenes.window->findChild<QTextEdit*>("m_unixTime")->setPlainText("5");
        scenes.Press("m_injectTime");
        QCOMPARE(Steps(), QString("0 1028 1 0 513 1"));
        QCOMPARE(scenes.frames.value(0).toHex(), QByteArray("e907031506000000") + "00000100");
        QCOMPARE(scenes.frames.value(1).toHex(), QByteArray("3601") + "e0eb0600" + "53000000" + "01000000");
        QCOMPARE(scenes.Status(), (QStringList{"PGNSS注入UTC时间命令发送成功", "注入PGNSS GPS时间命令发送成功"}));
        // What 64 bits do not hold reads as 0.
        scenes.List()->setCurrentIndex(1);
        scenes.Press("m_injectTime");
        QCOMPARE(scenes.frames.value(3).left(6).toHex(), QByteArray("b301005b0000"));
    }

    void AnEmptyListSendsADefaultRecord()
    {
        const Scenes scenes;
        for (const char* button : {"m_injectTime", "m_injectPos", "m_injectIon"}) {
            scenes.Press(button);
        }
        QCOMPARE(scenes.frames.size(), 3);
        QCOMPARE(scenes.frames.value(0).toHex(), QByteArray("b207010100000000") + "00000100");
        QCOMPARE(scenes.frames.value(1).left(6).toHex(), QByteArray("b301005b0000"));
        QCOMPARE(scenes.frames.value(2), QByteArray(16, '\0') + QByteArray::fromHex("0a00000000"));
    }

    void PositionAndIonosphere()
    {
        Scenes scenes;
        scenes.Choose();
        scenes.Press("m_injectPos");
        scenes.Press("m_injectIon");
        QCOMPARE(Steps(), QString("0 514 1 0 522 1"));
        QCOMPARE(scenes.frames.value(0).toHex(), QByteArray("0000000000205d400000000000a043c00a00000000"));
        QCOMPARE(scenes.frames.value(1), QByteArray("ION_CUT.bin"));
        QCOMPARE(scenes.Status(),
                 (QStringList{"注入PGNSS 参考位置命令发送成功", "注入高精度电离层参数命令发送成功"}));
        // Without its file, when the codec refuses it, and when nobody answers.
        scenes.List()->setCurrentIndex(1);
        const LogCatcher log;
        scenes.Press("m_injectIon");
        QVERIFY(log.Lines().contains("Inject hign precision ionex fail! Fail to open file"));
        scenes.List()->setCurrentIndex(0);
        FakeCodec::SetEncodeResult(-1);
        scenes.Press("m_injectIon");
        scenes.Press("m_injectPos");
        QVERIFY(log.Lines().contains("cut ionex retLen err: -1"));
        QVERIFY(Steps().endsWith("1 0 1 0 522 1 0 514 1"));
        FakeCodec::SetEncodeResult(0);
        scenes.acknowledge = nullptr;
        scenes.Press("m_injectPos");
        QCOMPARE(scenes.Status().mid(2), (QStringList{"PGNSS GPS EPH文件 打开失败！", "高精度电离层 组包失败！",
                                                      "PGNSS注入位置 ACK超时"}));
        QCOMPARE(Global::ackState, 4);
        QVERIFY(Steps().endsWith("1 0 514 1 0 514 1"));
    }

    void EphemeridesGoOutEachForItself()
    {
        const Scenes scenes(3);
        scenes.Choose();
        scenes.Press("m_injectEph");
        QCOMPARE(Steps(), QString("0 515 1 0 1 0 516 1 0 1 0 516 1"));
        QCOMPARE(scenes.frames,
                 (QList<QByteArray>{"GPS_PGNSS_REPLAY_FILE", "BDS_PGNSS_REPLAY_FILE", "QZSS_PGNSS_REPLAY_FILE"}));
        QCOMPARE(scenes.Status(), (QStringList{"注入PGNSS GPS星历命令错误", "PGNSS GLO EPH文件 打开失败！",
                                               "注入PGNSS BDS星历命令错误", "PGNSS GAL EPH文件 打开失败！",
                                               "注入PGNSS QZS星历命令错误"}));
        QVERIFY(scenes.LastIsRed());
    }

    void TheSleepSwitchIsPutBackWhenTheWindowGoes()
    {
        Scenes scenes;
        scenes.Choose();
        scenes.GoAtSend(1);
        scenes.window->SlotInjectEph();
        QVERIFY(scenes.window.isNull());
        QCOMPARE(Steps(), QString("0 515 1"));
        QCOMPARE(Global::ackState, 4);
    }
};

QTEST_MAIN(TestSceneReplay)
#include "tst_scenereplay.moc"
