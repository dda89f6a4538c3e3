// SPDX-License-Identifier: MIT
#include "Acknowledge.h"
#include "BoxAnswerer.h"
#include "FileDialogAnswerer.h"
#include "LogCatcher.h"
#include "StandInService.h"

#include "assist/AssistOffline.h"
#include "assist/SeedDecoder.h"
#include "seeds/ModelSky.h"

#include <QComboBox>
#include <QDateTime>
#include <QLabel>
#include <QLineEdit>
#include <QtTest>

#include <ctime>

namespace {

using Line = OpenLine<AssistOffline>;

constexpr int patience = 60000;

QString DataFolder()
{
    return QCoreApplication::applicationDirPath() + "/xgnss";
}

QString SeedPath()
{
    return DataFolder() + "/EE.dat";
}

void WriteFile(const QString& path, const QByteArray& content)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
}

QByteArray ReadFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

quint32 Now()
{
    return static_cast<quint32>(QDateTime::currentSecsSinceEpoch());
}

QByteArray Seed(quint32 start, quint32 end)
{
    const std::vector<std::uint8_t> image = seeds::PackSeed(seeds::MakeModelSeed(start, start, end));
    return QByteArray(reinterpret_cast<const char*>(image.data()), static_cast<int>(image.size()));
}

QByteArray GoodSeed()
{
    return Seed(Now() - 3600, Now() + 86400);
}

/// A library in the decoder's place while it lives.
class Decoder {
public:
    explicit Decoder(const char* library = SEED_DECODER)
    {
        SeedDecoder::Unload();
        QDir().mkpath(QFileInfo(SeedDecoder::LibraryPath()).path());
        QFile::remove(SeedDecoder::LibraryPath());
        QFile::copy(QString::fromUtf8(library), SeedDecoder::LibraryPath());
    }
    ~Decoder()
    {
        SeedDecoder::Unload();
        QFile::remove(SeedDecoder::LibraryPath());
    }
    Decoder(const Decoder&) = delete;
    Decoder& operator=(const Decoder&) = delete;
};

QString Label(const QWidget& window, const char* name)
{
    return window.findChild<QLabel*>(name)->text();
}

QLineEdit* PathEdit(const QWidget& window)
{
    return window.findChild<QLineEdit*>("Pgnss_EeFilePath");
}

} // namespace

class TestAssistOffline : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        qputenv("TZ", "Asia/Shanghai");
        tzset();
        QDir(DataFolder()).removeRecursively();
        QFile::remove(DataFolder());
    }

    void AMissingDecoderIsToldAndTheButtonsStillWork()
    {
        BoxAnswerer answerer;
        Line line;
        QCOMPARE(answerer.boxes, QStringList{"文件不存在|dll 文件不存在，请检查路径"});
        line.window->SlotRequest();
        line.window->SlotInject();
        QCOMPARE(answerer.boxes.mid(1), QStringList{"文件不存在|文件不存在，请检查路径"});
        // With a seed the time goes out before the decoder is missed.
        WriteFile(SeedPath(), "seed");
        PathEdit(*line.window)->setText(SeedPath());
        const LogCatcher log;
        line.window->SlotInject();
        QCOMPARE(EncodedIds(), QList<int>{1028});
        QVERIFY(log.Lines().contains("resolve GetPgnssDataValidTime failed"));
        QVERIFY(log.Lines().contains("there is some error while check seed time"));
        QCOMPARE(line.window->Counters().totalCount, 1U);
    }

    void ADecoderThatIsNoneStopsTheInjection()
    {
        WriteFile(SeedPath(), GoodSeed());
        const struct {
            const char* library;
            QString atTheStart;
            QString atTheInjection;
        } rows[] = {
            {GNSS_SOURCE_DIR "/README.md", "load failed.", "resolve GetPgnssDataValidTime failed"},
            {FAKE_CODEC_DIR "/fake_codec_Nothing.so", "resolve ParsePgnssData failed",
             "resolve GetPgnssDataValidTime failed"},
            {HALF_DECODER, "", "resolve ParsePgnssData failed"},
        };
        for (const auto& row : rows) {
            const Decoder decoder(row.library);
            const LogCatcher log;
            Line line;
            QVERIFY(row.atTheStart.isEmpty() || log.Lines().contains(row.atTheStart));
            line.window->SlotInject();
            QVERIFY(log.Lines().contains(row.atTheInjection));
            QCOMPARE(line.frames.size(), 1);
        }
    }

    void TheLabelsShowTheSeed()
    {
        const Decoder decoder;
        Line line;
        const AssistOffline& window = *line.window;
        QCOMPARE(Label(window, "Pgnss_EeFileSize"), QString("0B"));
        QCOMPARE(Label(window, "Pgnss_EeFileValidTime"), QString("2023.01.01-2023.01.02"));
        QCOMPARE(line.Status(), QStringList{"获取文件有效时间失败，错误码：2"});
        QCOMPARE(PathEdit(window)->text(), SeedPath());

        const QString seed = QDir::currentPath() + "/种子.dat";
        WriteFile(seed, Seed(1742508000, 1742594465));
        WriteFile(QDir::currentPath() + "/seed.DAT", GoodSeed());
        BoxAnswerer boxes;
        for (const QStringList& files : {QStringList{seed}, {QDir::currentPath() + "/seed.DAT"}, {}}) {
            const FileDialogAnswerer answerer(files);
            line.window->on_selectPgnssFile_clicked();
        }
        QCOMPARE(boxes.boxes, (QStringList{"提示|请选择正确的种子文件", "提示|选择路径不存在"}));
        QCOMPARE(Label(window, "Pgnss_EeFileSize"), QString::number(QFileInfo(seed).size() >> 10) + "KB");
        QCOMPARE(Label(window, "Pgnss_EeFileValidTime"), QString("2025/3/21 6:0:0 - 2025/3/22 6:1:5"));
        QCOMPARE(PathEdit(window)->text(), seed);
        QFile::remove(seed);
    }

    void ABlockedDataFolderIsTold()
    {
        const Decoder decoder;
        WriteFile(DataFolder(), "in the way");
        BoxAnswerer answerer;
        const AssistOffline window;
        QCOMPARE(answerer.boxes, QStringList{"ERROR|Create xgnss filePath failed!"});
        QCOMPARE(PathEdit(window)->text(), QCoreApplication::applicationDirPath() + "/EE.dat");
    }

    void TheWholeChainGoesOutInItsOrder()
    {
        const Decoder decoder;
        WriteFile(SeedPath(), GoodSeed());
        WriteFile(DataFolder() + "/GPS_" + QString::number(Now() + 7200) + ".eph", "of an earlier injection");
        Line line;
        line.Press("Pgnss_Inject");
        QCOMPARE(EncodedIds(),
                 (QList<int>{1028, 513, 515, 516, 516, 516, 516, 517, 520, 518, 519, 521, 519, 519}));
        QCOMPARE(line.columns, (QList<int>{0, 0, 0, 0, 1, 2, 3, 0, 0, 0, 0, 0, 1, 2}));
        // The decoder makes three ephemerides of each system: the last serves, of GLONASS the middle one.
        const QDir folder(DataFolder());
        QList<QByteArray> expected;
        for (const QString system : {"GPS", "GLO", "BDS", "GAL", "QZS"}) {
            const QStringList names = folder.entryList({system + "_*.eph"}, QDir::Files, QDir::Name);
            QCOMPARE(names.size(), 3);
            expected << ReadFile(folder.filePath(names[system == "GLO" ? 1 : 2]));
        }
        for (const char* name : {"GPS_UTC", "GPS_ION", "GPS_RTI", "GLO_RTI", "GLO_AUX", "BDS_RTI", "GAL_RTI"}) {
            expected << ReadFile(folder.filePath(QString(name) + ".dat"));
        }
        QVERIFY(!expected.contains(QByteArray()));
        QCOMPARE(line.frames.mid(2), expected);
        QCOMPARE(line.Status().mid(0, 3),
                 (QStringList{"PGNSS注入UTC时间命令发送成功", "注入PGNSS GPS时间命令发送成功",
                              "注入PGNSS GPS星历命令发送成功"}));
        QCOMPARE(line.Status().last(), QString("PGNSS所有辅助数据注入成功！"));
        QCOMPARE(line.window->Counters().totalCount, 0U);
    }

    void WhatTheCodecRefusesEndsTheChain()
    {
        const struct {
            int accepted; ///< frames before the codec refuses
            QString line;
        } rows[] = {{1, "PGNSS注入预测时间 组包失败!"},
                    {3, "PGNSS注入GLO星历 组包失败！"},
                    {13, "PGNSS注入GLO RTI数据失败！"}};
        const Decoder decoder;
        WriteFile(SeedPath(), GoodSeed());
        for (const auto& row : rows) {
            Line line;
            line.AtSend(row.accepted, [] { FakeCodec::SetEncodeResult(-2); });
            line.window->SlotInject();
            QCOMPARE(line.frames.size(), row.accepted);
            QCOMPARE(line.Status().mid(row.accepted), (QStringList{row.line, "PGNSS所有辅助数据注入成功！"}));
        }
    }

    void MissingFilesArePassedOver()
    {
        const Decoder decoder;
        WriteFile(SeedPath(), GoodSeed());
        Line line(1);
        const LogCatcher log;
        line.AtSend(2, [] {
            QDir folder(DataFolder());
            for (const QString& name : folder.entryList({"*_*"}, QDir::Files)) {
                if (!name.startsWith("BDS_1") && name != "GLO_AUX.dat") {
                    folder.remove(name);
                }
            }
            WriteFile(folder.filePath("gps_UTC.dat"), "x");
        });
        line.window->SlotInject();
        QCOMPARE(EncodedIds(), (QList<int>{1028, 513, 516, 521}));
        QCOMPARE(line.Status(),
                 (QStringList{"PGNSS注入UTC时间命令长度异常", "注入PGNSS GPS时间命令长度异常",
                              "PGNSS GPS EPH文件 打开失败！", "PGNSS GLO EPH文件 打开失败！",
                              "注入PGNSS BDS星历命令长度异常", "PGNSS GAL EPH文件 打开失败！",
                              "PGNSS QZS EPH文件 打开失败！", "注入PGNSS GLO频点转换关系命令长度异常",
                              "PGNSS辅助数据注入成功 0/4!"}));
        QVERIFY(log.Lines().contains("Inject qzs eph fail! Fail to open file"));
    }

    void WhatStopsAnInjection()
    {
        const Decoder decoder;
        Line line;
        BoxAnswerer answerer;
        Global::serialOpen = false;
        line.window->SlotInject();
        Global::serialOpen = true;
        line.window->SlotInject();
        // The folder of an empty path would be the current one.
        WriteFile(QDir::currentPath() + "/GPS_1.eph", "mine");
        PathEdit(*line.window)->clear();
        const LogCatcher log;
        line.window->SlotInject();
        QVERIFY(log.Lines().contains("Don't exist "));
        QVERIFY(QFile::remove(QDir::currentPath() + "/GPS_1.eph"));
        QCOMPARE(answerer.boxes, (QStringList{"提示|请先打开串口", "文件不存在|文件不存在，请检查路径",
                                              "文件不存在|文件不存在，请检查路径"}));
        QVERIFY(line.frames.isEmpty());

        PathEdit(*line.window)->setText(SeedPath());
        WriteFile(SeedPath(), GoodSeed());
        QDir(DataFolder()).mkdir("GPS_UTC.dat"); // in the way of the decoder's file
        line.window->SlotInject();
        QCOMPARE(answerer.boxes.mid(3), QStringList{"错误|解析文件异常"});
        QVERIFY(log.Lines().contains("error code is 15"));
        WriteFile(SeedPath(), Seed(Now() - 86400, Now() + 3500));
        line.window->SlotInject();
        QCOMPARE(answerer.boxes.mid(4), QStringList{"种子无效|种子文件已失效，请更新"});
        QVERIFY(log.Lines().contains("EE Data not in the time interval"));
        WriteFile(SeedPath(), "no seed");
        line.window->SlotInject();
        QVERIFY(log.Lines().contains("get valid time failed4"));
        QCOMPARE(EncodedIds(), (QList<int>{1028, 1028, 1028}));
        // The times that went out stay counted.
        QCOMPARE(line.window->Counters().successCount, 3U);
        QCOMPARE(line.Status().last(), QString("PGNSS注入UTC时间命令发送成功"));
    }

    void ACustomTimeIsReadWhenItIsChosen()
    {
        const Decoder decoder;
        constexpr qint64 custom = 1742508000; // 2025-03-20 22:00 UTC
        WriteFile(SeedPath(), Seed(custom - 3600, custom + 86400));
        Line line;
        auto* source = line.window->findChild<QComboBox*>("Pgnss_TimeSource");
        auto* text = line.window->findChild<QLineEdit*>("Pgnss_UtcTime");
        text->setText("2025/03/21 06:00:00");
        source->setCurrentIndex(1);
        text->setText("2025/13/21 06:00:00");
        BoxAnswerer answerer;
        source->setCurrentIndex(0);
        source->setCurrentIndex(1);
        QCOMPARE(answerer.boxes, QStringList{"提示|请输入正确的UTC时间, 示例: 2025/03/21 06:00:00"});
        line.window->SlotInject();
        QCOMPARE(line.frames.size(), 14);
        QCOMPARE(line.frames.at(0).toHex(), QByteArray("e907031416000000") + "00000100");
        QCOMPARE(line.frames.at(1).toHex(), QByteArray("3601") + "607b0600" + "53000000" + "01000000");
        QVERIFY(QFile::exists(DataFolder() + "/GLO_1742508000.eph"));
    }

    void ASeedIsFetched()
    {
        const Decoder decoder;
        StandInService service;
        const QByteArray seed = Seed(1742508000, 1742594465);
        service.AnswerWith("200 OK", seed);
        Line line;
        PathEdit(*line.window)->setText("elsewhere.dat");
        line.window->findChild<QComboBox*>("Pgnss_Period")->setCurrentText("14");
        const LogCatcher log;
        line.Press("Pgnss_Request");
        QTRY_VERIFY_WITH_TIMEOUT(Label(*line.window, "Pgnss_EeFileValidTime").startsWith("2025/3/21"), patience);
        QVERIFY(service.requests.value(0).startsWith("GET /lumat/v1/xgnss/pgnss?period=14 HTTP/1.1\r\n"));
        const QString size = QString::number(seed.size() >> 10) + "KB";
        QCOMPARE(line.Status().last(), "离线辅助数据下载成功(" + size + ")");
        QCOMPARE(Label(*line.window, "Pgnss_EeFileSize"), size);
        QCOMPARE(PathEdit(*line.window)->text(), QString("elsewhere.dat"));
        QCOMPARE(ReadFile(SeedPath()), seed);
        QVERIFY(log.Lines().contains("creat EE.dat failed"));
        QVERIFY(log.Lines().filter(service.Key()).isEmpty());
    }

    void AFailedFetchIsToldAndKeepsTheSeed()
    {
        const Decoder decoder;
        StandInService service;
        WriteFile(SeedPath(), "kept");
        Line line;
        auto fetch = [&](const QByteArray& status, const QByteArray& body) {
            service.AnswerWith(status, body);
            const int lines = line.Status().size();
            line.window->SlotRequest();
            const bool told = QTest::qWaitFor([&] { return line.Status().size() > lines; }, patience);
            return told ? line.Status().last() : QString();
        };
        QVERIFY(fetch("403 No", "bad signature").contains("/lumat/v1/xgnss/pgnss"));
        QCOMPARE(fetch("200 OK", ""), QString("下载离线辅助数据失败！"));
        QVERIFY(line.LastIsRed());
        QCOMPARE(QFileInfo(SeedPath()).size(), 4);
        // It cannot be written: a folder stands there.
        QVERIFY(QFile::remove(SeedPath()) && QDir().mkpath(SeedPath()));
        QCOMPARE(fetch("200 OK", "seed"), QString("下载离线辅助数据失败！"));
        service.close();
        QVERIFY(!fetch("200 OK", "x").isEmpty());
    }

    void APortClosedOnTheWayEndsTheChain()
    {
        const Decoder decoder;
        WriteFile(SeedPath(), GoodSeed());
        for (const int number : {1, 2, 5, 9}) {
            Line line;
            line.AtSend(number, [] { Global::serialOpen = false; });
            line.window->SlotInject();
            QCOMPARE(line.frames.size(), number);
            QCOMPARE(line.window->Counters().totalCount, static_cast<quint32>(number));
        }
    }

    void ASecondClickRunsInsideTheFirst()
    {
        const Decoder decoder;
        WriteFile(SeedPath(), GoodSeed());
        Line line;
        line.AtSend(3, [&line] { line.Press("Pgnss_Inject"); });
        line.Press("Pgnss_Inject");
        QCOMPARE(line.frames.size(), 28);
        QCOMPARE(line.Status().filter(QRegularExpression("PGNSS(所有)?辅助数据注入成功")).size(), 2);
        QCOMPARE(Global::ackState, 4);
    }

    void TheWindowMayGoWhereverItWaits()
    {
        const Decoder decoder;
        WriteFile(SeedPath(), GoodSeed());
        for (const int number : {1, 2, 3, 14}) {
            Line line;
            line.GoAtSend(number);
            line.window->SlotInject();
            QVERIFY(line.window.isNull());
            QCOMPARE(line.frames.size(), number);
            QVERIFY(line.Status().filter("PGNSS辅助数据").isEmpty());
        }
    }
};

QTEST_MAIN(TestAssistOffline)
#include "tst_offline.moc"
