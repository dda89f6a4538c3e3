#include "Acknowledge.h"
#include "BoxAnswerer.h"
#include "FakeDecoder.h"
#include "FileDialogAnswerer.h"
#include "LogCatcher.h"
#include "StandInService.h"

#include "assist/AssistOffline.h"

#include <QComboBox>
#include <QDateTime>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QtEndian>
#include <QtTest>

#include <ctime>

namespace {

constexpr int patience = 60000;

QString DataFolder()
{
    return QCoreApplication::applicationDirPath() + "/xgnss";
}

void WriteFile(const QString& path, const QByteArray& content)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
}

/// A seed of the fake decoder that gives every file, the ephemerides for times around `time`.
QByteArray WholeSeed(qint64 time)
{
    QByteArray seed;
    auto ephemeris = [&](const char* system, qint64 offset, const char* content) {
        seed += QByteArray(system) + '_' + QByteArray::number(time + offset) + ".eph " + content + '\n';
    };
    ephemeris("GPS", -7200, "old");
    ephemeris("GPS", 7000, "gps");
    ephemeris("GPS", 7500, "ahead");
    ephemeris("GLO", -600, "glo");
    ephemeris("GLO", 1200, "ahead");
    ephemeris("BDS", -600000, "bds");
    ephemeris("GAL", 0, "gal");
    ephemeris("QZS", -1, "qzs");
    for (const char* name : {"GPS_UTC", "GPS_ION", "GPS_RTI", "GLO_RTI", "GLO_AUX", "BDS_RTI", "GAL_RTI"}) {
        seed += QByteArray(name) + ".dat " + QByteArray(name).toLower() + '\n';
    }
    return seed;
}

QString Label(const QWidget& window, const char* name)
{
    return window.findChild<QLabel*>(name)->text();
}

} // namespace

class TestAssistOffline : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        qputenv("TZ", "UTC");
        tzset();
        QDir(DataFolder()).removeRecursively();
        QFile::remove(DataFolder());
    }

    void AMissingDecoderIsToldAndTheButtonsStillWork()
    {
        SenderTest test;
        BoxAnswerer answerer;
        AssistOffline window;
        QCOMPARE(answerer.boxes, QStringList{"文件不存在|dll 文件不存在，请检查路径"});
        test.Listen(&window);
        AcknowledgeEach(test);
        Global::serialOpen = true;
        window.SlotRequest();
        window.SlotInject();
        QCOMPARE(answerer.boxes.mid(1), QStringList{"文件不存在|文件不存在，请检查路径"});
        // With a seed the time goes out before the decoder is missed.
        WriteFile(DataFolder() + "/EE.dat", "seed");
        window.findChild<QLineEdit*>("Pgnss_EeFilePath")->setText(DataFolder() + "/EE.dat");
        const LogCatcher log;
        window.SlotInject();
        QCOMPARE(EncodedIds(), QList<int>{1028});
        QCOMPARE(log.Lines().filter("seed time"), QStringList{"there is some error while check seed time"});
        QVERIFY(log.Lines().contains("resolve GetPgnssDataValidTime failed"));
        QCOMPARE(window.Counters().totalCount, 1U);
    }

    void AWrongDecoderIsLogged()
    {
        SenderTest test;
        const FakeDecoder decoder;
        WriteFile(SeedDecoder::LibraryPath(), "not a library");
        const LogCatcher log;
        const AssistOffline window;
        QVERIFY(log.Lines().contains("load failed."));
        QVERIFY(log.Lines().contains("resolve ParsePgnssData failed"));
        QCOMPARE(Label(window, "Pgnss_EeFileSize"), QString("0B"));
    }

    void MissingEntryPointsStopTheInjection()
    {
        SenderTest test;
        WriteFile(DataFolder() + "/EE.dat", "GPS_UTC.dat x");
        Global::serialOpen = true;
        for (const char* missing : {"GetPgnssDataValidTime", "ParsePgnssData"}) {
            const FakeDecoder decoder(missing);
            AssistOffline window;
            test.Listen(&window);
            AcknowledgeEach(test);
            const LogCatcher log;
            window.SlotInject();
            QVERIFY(log.Lines().contains(QString("resolve %1 failed").arg(missing)));
            QCOMPARE(window.Counters().successCount, 1U);
        }
        QCOMPARE(test.frames.size(), 2);
    }

    void TheLabelsShowTheSeed()
    {
        SenderTest test;
        const FakeDecoder decoder;
        AssistOffline window;
        QCOMPARE(Label(window, "Pgnss_EeFileSize"), QString("0B"));
        QCOMPARE(Label(window, "Pgnss_EeFileValidTime"), QString("2023.01.01-2023.01.02"));
        QCOMPARE(test.Status(), QStringList{"获取文件有效时间失败，错误码：17"});
        QCOMPARE(window.findChild<QLineEdit*>("Pgnss_EeFilePath")->text(), DataFolder() + "/EE.dat");

        const QString seed = QDir::currentPath() + "/种子.dat";
        WriteFile(seed, QByteArray(3000, 's'));
        decoder.SetSpan(1742508000, 1742594400);
        {
            const FileDialogAnswerer answerer({seed});
            window.on_selectPgnssFile_clicked();
        }
        QCOMPARE(Label(window, "Pgnss_EeFileSize"), QString("2KB"));
        QCOMPARE(Label(window, "Pgnss_EeFileValidTime"), QString("2025/3/20 22:0:0 - 2025/3/21 22:0:0"));
        QCOMPARE(window.findChild<QLineEdit*>("Pgnss_EeFilePath")->text(), seed);
        QCOMPARE(decoder.Calls().last(), "valid " + seed);

        WriteFile(QDir::currentPath() + "/seed.DAT", "s");
        BoxAnswerer boxes;
        {
            const FileDialogAnswerer answerer({QDir::currentPath() + "/seed.DAT"});
            window.on_selectPgnssFile_clicked();
        }
        const FileDialogAnswerer answerer({});
        window.on_selectPgnssFile_clicked();
        QCOMPARE(boxes.boxes, (QStringList{"提示|请选择正确的种子文件", "提示|选择路径不存在"}));
        QCOMPARE(window.findChild<QLineEdit*>("Pgnss_EeFilePath")->text(), seed);
        QFile::remove(seed);
    }

    void ABlockedDataFolderIsTold()
    {
        SenderTest test;
        const FakeDecoder decoder;
        WriteFile(DataFolder(), "in the way");
        BoxAnswerer answerer;
        const AssistOffline window;
        QCOMPARE(answerer.boxes, QStringList{"ERROR|Create xgnss filePath failed!"});
        QCOMPARE(window.findChild<QLineEdit*>("Pgnss_EeFilePath")->text(),
                 QCoreApplication::applicationDirPath() + "/EE.dat");
    }

    void TheWholeChainGoesOutInItsOrder()
    {
        SenderTest test;
        const FakeDecoder decoder;
        const qint64 now = QDateTime::currentSecsSinceEpoch();
        WriteFile(DataFolder() + "/EE.dat", WholeSeed(now));
        WriteFile(DataFolder() + "/GPS_" + QString::number(now + 7100) + ".eph", "of an earlier injection");
        AssistOffline window;
        test.Listen(&window);
        AcknowledgeEach(test);
        QList<int> columns;
        test.acknowledge = [&columns, before = test.acknowledge] {
            columns.append(Global::ackTableColumn);
            before();
        };
        Global::serialOpen = true;
        window.findChild<QPushButton*>("Pgnss_Inject")->click();
        QCOMPARE(EncodedIds(),
                 (QList<int>{1028, 513, 515, 516, 516, 516, 516, 517, 520, 518, 519, 521, 519, 519}));
        QCOMPARE(columns, (QList<int>{0, 0, 0, 0, 1, 2, 3, 0, 0, 0, 0, 0, 1, 2}));
        QCOMPARE(test.frames.mid(2), (QList<QByteArray>{"gps", "glo", "bds", "gal", "qzs", "gps_utc", "gps_ion",
                                                        "gps_rti", "glo_rti", "glo_aux", "bds_rti", "gal_rti"}));
        QCOMPARE(test.Status().mid(0, 3),
                 (QStringList{"PGNSS注入UTC时间命令发送成功", "注入PGNSS GPS时间命令发送成功",
                              "注入PGNSS GPS星历命令发送成功"}));
        QCOMPARE(test.Status().last(), QString("PGNSS所有辅助数据注入成功！"));
        QCOMPARE(window.Counters().totalCount, 0U);
        const QString seed = DataFolder() + "/EE.dat";
        QCOMPARE(decoder.Calls().value(1), "valid " + seed);
        const QStringList parse = decoder.Calls().last().split(' ');
        QCOMPARE(parse.mid(1, 2), (QStringList{seed, DataFolder()}));
        QVERIFY(qAbs(parse.value(3).toLongLong() - now) < 600);
        QCOMPARE(parse.value(4), QString("1"));
    }

    void WhatTheCodecRefusesEndsTheChain_data()
    {
        QTest::addColumn<int>("accepted"); ///< frames before the codec refuses
        QTest::addColumn<QStringList>("lines");
        QTest::newRow("reference time")
            << 1 << QStringList{"PGNSS注入预测时间 组包失败!", "PGNSS所有辅助数据注入成功！"};
        QTest::newRow("GLO") << 3 << QStringList{"PGNSS注入GLO星历 组包失败！", "PGNSS所有辅助数据注入成功！"};
        QTest::newRow("GAL data") << 13
                                  << QStringList{"PGNSS注入GLO RTI数据失败！", "PGNSS所有辅助数据注入成功！"};
    }

    void WhatTheCodecRefusesEndsTheChain()
    {
        QFETCH(int, accepted);
        QFETCH(QStringList, lines);
        SenderTest test;
        const FakeDecoder decoder;
        WriteFile(DataFolder() + "/EE.dat", WholeSeed(QDateTime::currentSecsSinceEpoch()));
        AssistOffline window;
        test.Listen(&window);
        AcknowledgeEach(test);
        AtSend(test, accepted, [] { FakeCodec::SetEncodeResult(-2); });
        Global::serialOpen = true;
        window.SlotInject();
        QCOMPARE(test.frames.size(), accepted);
        QCOMPARE(test.Status().mid(accepted), lines);
    }

    void MissingFilesArePassedOver()
    {
        SenderTest test;
        const FakeDecoder decoder;
        const QByteArray now = QByteArray::number(QDateTime::currentSecsSinceEpoch());
        WriteFile(DataFolder() + "/EE.dat", "BDS_" + now + ".eph bds\ngps_UTC.dat x\nGLO_AUX.dat aux\n");
        AssistOffline window;
        test.Listen(&window);
        AcknowledgeEach(test, 1);
        Global::serialOpen = true;
        const LogCatcher log;
        window.SlotInject();
        QCOMPARE(EncodedIds(), (QList<int>{1028, 513, 516, 521}));
        QCOMPARE(test.Status(),
                 (QStringList{"PGNSS注入UTC时间命令长度异常", "注入PGNSS GPS时间命令长度异常",
                              "PGNSS GPS EPH文件 打开失败！", "PGNSS GLO EPH文件 打开失败！",
                              "注入PGNSS BDS星历命令长度异常", "PGNSS GAL EPH文件 打开失败！",
                              "PGNSS QZS EPH文件 打开失败！", "注入PGNSS GLO频点转换关系命令长度异常",
                              "PGNSS辅助数据注入成功 0/4!"}));
        QVERIFY(log.Lines().contains("Inject qzs eph fail! Fail to open file"));
    }

    void WhatStopsAnInjection()
    {
        SenderTest test;
        const FakeDecoder decoder;
        AssistOffline window;
        test.Listen(&window);
        AcknowledgeEach(test);
        auto* path = window.findChild<QLineEdit*>("Pgnss_EeFilePath");
        BoxAnswerer answerer;
        window.SlotInject();
        Global::serialOpen = true;
        window.SlotInject();
        // The folder of an empty path would be the current one.
        WriteFile(QDir::currentPath() + "/GPS_1.eph", "mine");
        path->clear();
        const LogCatcher log;
        window.SlotInject();
        QVERIFY(log.Lines().contains("Don't exist "));
        QVERIFY(QFile::remove(QDir::currentPath() + "/GPS_1.eph"));
        QCOMPARE(answerer.boxes, (QStringList{"提示|请先打开串口", "文件不存在|文件不存在，请检查路径",
                                              "文件不存在|文件不存在，请检查路径"}));
        QVERIFY(test.frames.isEmpty());

        path->setText(DataFolder() + "/EE.dat");
        WriteFile(path->text(), "GPS_UTC.dat x");
        decoder.SetResults(0, 9);
        window.SlotInject();
        QCOMPARE(answerer.boxes.mid(3), QStringList{"错误|解析文件异常"});
        QVERIFY(log.Lines().contains("error code is 9"));
        const auto now = static_cast<quint32>(QDateTime::currentSecsSinceEpoch());
        decoder.SetSpan(now - 86400, now + 3500);
        window.SlotInject();
        QCOMPARE(answerer.boxes.mid(4), QStringList{"种子无效|种子文件已失效，请更新"});
        QVERIFY(log.Lines().contains("EE Data not in the time interval"));
        decoder.SetResults(4, 0);
        window.SlotInject();
        QVERIFY(log.Lines().contains("get valid time failed4"));
        QCOMPARE(EncodedIds(), (QList<int>{1028, 1028, 1028}));
        // The times that went out stay counted.
        QCOMPARE(window.Counters().successCount, 3U);
        QCOMPARE(test.Status().last(), QString("PGNSS注入UTC时间命令发送成功"));
    }

    void ACustomTimeIsReadWhenItIsChosen()
    {
        qputenv("TZ", "Asia/Shanghai");
        tzset();
        SenderTest test;
        const FakeDecoder decoder;
        // 2025-03-20 22:00 UTC
        constexpr qint64 custom = 1742508000;
        WriteFile(DataFolder() + "/EE.dat", WholeSeed(custom));
        AssistOffline window;
        test.Listen(&window);
        AcknowledgeEach(test);
        auto* source = window.findChild<QComboBox*>("Pgnss_TimeSource");
        auto* text = window.findChild<QLineEdit*>("Pgnss_UtcTime");
        text->setText("2025/03/21 06:00:00");
        source->setCurrentIndex(1);
        text->setText("2025/13/21 06:00:00");
        BoxAnswerer answerer;
        source->setCurrentIndex(0);
        source->setCurrentIndex(1);
        QCOMPARE(answerer.boxes, QStringList{"提示|请输入正确的UTC时间, 示例: 2025/03/21 06:00:00"});
        Global::serialOpen = true;
        window.SlotInject();
        QCOMPARE(test.frames.size(), 14);
        QCOMPARE(test.frames.at(0).toHex(), QByteArray("e907031416000000") + "00000100");
        const quint32 sinceEpoch = custom - 315964800;
        QCOMPARE(qFromLittleEndian<quint16>(test.frames.at(1).constData()), (sinceEpoch / 604800) & 0x3FF);
        QCOMPARE(qFromLittleEndian<quint32>(test.frames.at(1).constData() + 2), sinceEpoch % 604800);
        QCOMPARE(decoder.Calls().last().section(' ', 3, 3).toLongLong(), custom);
    }

    void ASeedIsFetched()
    {
        SenderTest test;
        const FakeDecoder decoder;
        StandInService service;
        service.AnswerWith("200 OK", QByteArray(5000, 's'));
        AssistOffline window;
        decoder.SetSpan(0, 60);
        window.findChild<QLineEdit*>("Pgnss_EeFilePath")->setText("elsewhere.dat");
        window.findChild<QComboBox*>("Pgnss_Period")->setCurrentText("14");
        const LogCatcher log;
        window.findChild<QPushButton*>("Pgnss_Request")->click();
        QTRY_COMPARE_WITH_TIMEOUT(Label(window, "Pgnss_EeFileSize"), QString("4KB"), patience);
        QVERIFY(service.requests.value(0).startsWith("GET /lumat/v1/xgnss/pgnss?period=14 HTTP/1.1\r\n"));
        QCOMPARE(test.Status().last(), QString("离线辅助数据下载成功(4KB)"));
        QCOMPARE(Label(window, "Pgnss_EeFileValidTime"), QString("1970/1/1 0:0:0 - 1970/1/1 0:1:0"));
        QCOMPARE(window.findChild<QLineEdit*>("Pgnss_EeFilePath")->text(), QString("elsewhere.dat"));
        QCOMPARE(QFileInfo(DataFolder() + "/EE.dat").size(), 5000);
        QVERIFY(log.Lines().contains("creat EE.dat failed"));
        QVERIFY(log.Lines().filter(service.Key()).isEmpty());
    }

    void AFailedFetchIsToldAndKeepsTheSeed()
    {
        SenderTest test;
        const FakeDecoder decoder;
        StandInService service;
        WriteFile(DataFolder() + "/EE.dat", "kept");
        AssistOffline window;
        auto fetch = [&](const QByteArray& status, const QByteArray& body) {
            service.AnswerWith(status, body);
            const int lines = test.Status().size();
            window.SlotRequest();
            const bool told = QTest::qWaitFor([&] { return test.Status().size() > lines; }, patience);
            return told ? test.Status().last() : QString();
        };
        QVERIFY(fetch("403 No", "bad signature").contains("/lumat/v1/xgnss/pgnss"));
        QCOMPARE(fetch("200 OK", ""), QString("下载离线辅助数据失败！"));
        QVERIFY(test.LastIsRed());
        service.close();
        QVERIFY(!fetch("200 OK", "x").isEmpty());
        QCOMPARE(QFileInfo(DataFolder() + "/EE.dat").size(), 4);
    }

    void AFolderThatCannotBeWrittenIsToldAsAFailure()
    {
        SenderTest test;
        const FakeDecoder decoder;
        StandInService service;
        service.AnswerWith("200 OK", "seed");
        AssistOffline window;
        QVERIFY(QDir().mkpath(DataFolder() + "/EE.dat"));
        window.SlotRequest();
        QTRY_COMPARE_WITH_TIMEOUT(test.Status().last(), QString("下载离线辅助数据失败！"), patience);
    }

    void APortClosedOnTheWayEndsTheChain()
    {
        const FakeDecoder decoder;
        for (const int number : {1, 2, 5, 9}) {
            SenderTest test;
            WriteFile(DataFolder() + "/EE.dat", WholeSeed(QDateTime::currentSecsSinceEpoch()));
            AssistOffline window;
            test.Listen(&window);
            AcknowledgeEach(test);
            AtSend(test, number, [] { Global::serialOpen = false; });
            Global::serialOpen = true;
            window.SlotInject();
            QCOMPARE(test.frames.size(), number);
            QCOMPARE(window.Counters().totalCount, static_cast<quint32>(number));
        }
    }

    void TheWindowMayGoWhereverItWaits()
    {
        const FakeDecoder decoder;
        for (const int number : {1, 2, 3, 14}) {
            SenderTest test;
            WriteFile(DataFolder() + "/EE.dat", WholeSeed(QDateTime::currentSecsSinceEpoch()));
            QPointer<AssistOffline> window = new AssistOffline;
            test.Listen(window.data());
            AcknowledgeEach(test);
            test.acknowledge = [&test, window, number, before = test.acknowledge] {
                if (test.frames.size() < number) {
                    before();
                } else {
                    QTimer::singleShot(20, [window] { delete window; });
                }
            };
            Global::serialOpen = true;
            window->SlotInject();
            QVERIFY(window.isNull());
            QCOMPARE(test.frames.size(), number);
            QVERIFY(test.Status().filter("PGNSS辅助数据").isEmpty());
        }
    }
};

QTEST_MAIN(TestAssistOffline)
#include "tst_assistoffline.moc"
