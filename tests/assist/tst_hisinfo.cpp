#include "BoxAnswerer.h"
#include "FileDialogAnswerer.h"
#include "SenderTest.h"

#include "assist/AssistRecords.h"
#include "assist/HisInfoInject.h"

#include <QFile>
#include <QLineEdit>
#include <QTextEdit>
#include <QtTest>

class TestHisInfo : public QObject {
    Q_OBJECT

private:
    static QString DefaultPath() { return QCoreApplication::applicationDirPath() + "/HisInfo/HisInfo.bin"; }

    static void WriteFile(const QByteArray& content)
    {
        QFile file(DefaultPath());
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    /// Acknowledges first the UTC time and then the block.
    static std::function<void()> AcknowledgeBoth(quint16 utcStatus, quint16 blockStatus)
    {
        auto count = std::make_shared<int>(0);
        return [=] {
            const CbRecvAckType record =
                (*count)++ == 0 ? CbRecvAckType{1028, utcStatus} : CbRecvAckType{257, blockStatus};
            QTimer::singleShot(0, [record] { GnssAck().ProcAck(&record, sizeof(record)); });
        };
    }

private Q_SLOTS:
    void init() { QDir(QCoreApplication::applicationDirPath() + "/HisInfo").removeRecursively(); }

    void UtcRecordHasItsBytes()
    {
        const QDateTime time(QDate(2026, 11, 22), QTime(21, 5, 59, 999), Qt::OffsetFromUTC, 3600);
        QCOMPARE(UtcTimeRecord(time), QByteArray::fromHex("ea070b1614053b00e7030100"));
    }

    void TheRequestGoesOutAndItsReportIsSaved()
    {
        SenderTest test;
        HisInfoInject window;
        test.Listen(&window);
        window.SlotSendRptHisInfoCmd();
        QCOMPARE(test.frames, QList<QByteArray>{QByteArray::fromHex("7e040d0002010000010000007e")});
        auto* timer = window.findChild<QTimer*>();
        QVERIFY(timer->isActive());
        QCOMPARE(timer->interval(), 5000);
        const QByteArray block("\0\xff\r\nx", 5);
        window.OnHisInfo(block.constData(), block.size());
        QVERIFY(!timer->isActive());
        QFile file(DefaultPath());
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), block);
        QCOMPARE(test.Status(),
                 (QStringList{"历史信息保存成功: 5/5 bytes", "历史信息保存路径：" + DefaultPath()}));
        QCOMPARE(window.findChild<QLineEdit*>()->text(), DefaultPath());
        // Also one that nobody asked for.
        window.OnHisInfo("y", 1);
        QCOMPARE(file.size(), 1);
        window.OnHisInfo(nullptr, 5);
        window.OnHisInfo("z", 0);
        QCOMPARE(file.size(), 1);
    }

    void TheTimeoutIsToldOnce()
    {
        SenderTest test;
        HisInfoInject window;
        test.Listen(&window);
        window.SlotSendRptHisInfoCmd();
        auto* timer = window.findChild<QTimer*>();
        timer->setInterval(1);
        QTRY_COMPARE(test.Status(), QStringList{"历史信息获取失败，请重新获取"});
        QVERIFY(!timer->isActive());
        window.SlotSendRptHisInfoCmd();
        QCOMPARE(timer->interval(), 5000);
        FakeCodec::SetEncodeResult(-1);
        timer->stop();
        window.SlotSendRptHisInfoCmd();
        QVERIFY(!timer->isActive());
    }

    void AChosenFileIsUsedAndACancelledChoiceKeepsIt()
    {
        SenderTest test;
        HisInfoInject window;
        const QString other = QDir(QDir::currentPath()).filePath("other.bin");
        QFile file(other);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.close();
        {
            const FileDialogAnswerer answerer({other});
            window.SlotSelectHisInfoFilePath();
            QCOMPARE(answerer.answered, 1);
            QCOMPARE(answerer.title, QStringLiteral("选择文件"));
            QCOMPARE(answerer.directory, QFileInfo(DefaultPath()).path());
            QCOMPARE(answerer.filters, QStringList{"Bin file(*.bin)"});
        }
        QCOMPARE(window.FilePath(), other);
        auto* edit = window.findChild<QLineEdit*>();
        QCOMPARE(edit->text(), other);
        edit->setText("typed");
        const FileDialogAnswerer answerer({});
        window.SlotSelectHisInfoFilePath();
        QCOMPARE(edit->text(), other);
        window.OnHisInfo("block", 5);
        QCOMPARE(QFileInfo(other).size(), 5);
        file.remove();
    }

    void TheWindowMayGoWhereverItWaits_data()
    {
        QTest::addColumn<int>("sendsBefore");
        QTest::addColumn<bool>("atTheSend");
        QTest::newRow("at the send of the time") << 0 << true;
        QTest::newRow("in the wait for the time") << 0 << false;
        QTest::newRow("at the send of the block") << 1 << true;
        QTest::newRow("in the wait for the block") << 1 << false;
    }

    void TheWindowMayGoWhereverItWaits()
    {
        QFETCH(int, sendsBefore);
        QFETCH(bool, atTheSend);
        SenderTest test;
        QPointer<HisInfoInject> window = new HisInfoInject;
        test.Listen(window.data());
        WriteFile("history");
        const std::function<void()> acknowledgeFirst = AcknowledgeBoth(0, 0);
        test.acknowledge = [&] {
            if (test.frames.size() <= sendsBefore) {
                acknowledgeFirst();
            } else if (atTheSend) {
                delete window;
            } else {
                QTimer::singleShot(30, [window] { delete window; });
            }
        };
        window->SlotInjectHisInfo();
        QVERIFY(window.isNull());
        QCOMPARE(test.frames.size(), sendsBefore + 1);
        QCOMPARE(Global::ackState, 4);
        QVERIFY(test.Status().filter("超时").isEmpty());
    }

    void TheWindowMayGoWhileABoxOrADialogIsOpen()
    {
        SenderTest test;
        QPointer<HisInfoInject> window = new HisInfoInject;
        {
            const FileDialogAnswerer answerer({}, [&window] { delete window; });
            window->SlotSelectHisInfoFilePath();
        }
        QVERIFY(window.isNull());

        window = new HisInfoInject;
        test.Listen(window.data());
        test.acknowledge = AcknowledgeBoth(0, 0);
        WriteFile("");
        QTimer timer;
        connect(&timer, &QTimer::timeout, [&window] {
            if (QApplication::activeModalWidget() != nullptr) {
                delete window;
            }
        });
        timer.start(5);
        window->SlotInjectHisInfo();
        QVERIFY(window.isNull());

        timer.stop();
        window = new HisInfoInject;
        test.Listen(window.data());
        test.acknowledge = [&window] { delete window; };
        window->SlotSendRptHisInfoCmd();
        QVERIFY(window.isNull());
    }

    void AFileIsInjectedAfterTheTime()
    {
        SenderTest test;
        HisInfoInject window;
        test.Listen(&window);
        WriteFile("history");
        test.acknowledge = AcknowledgeBoth(0, 0);
        window.SlotInjectHisInfo();
        QCOMPARE(test.frames.size(), 2);
        QCOMPARE(test.frames.at(0).size(), 12);
        QCOMPARE(test.frames.at(0).mid(10), QByteArray("\1\0", 2));
        QCOMPARE(test.frames.at(1), QByteArray("history"));
        QCOMPARE(test.stateAtSend, (QList<int>{5, 5}));
        QCOMPARE(test.Status(), (QStringList{"注入UTC时间命令发送成功: 12 bytes", "读取历史文件成功：7 bytes",
                                             "注入历史信息命令发送成功: 7 bytes"}));
        QCOMPARE(Global::ackState, 4);
    }

    void ARefusedTimeEndsTheInjection()
    {
        SenderTest test;
        HisInfoInject window;
        test.Listen(&window);
        WriteFile("history");
        test.acknowledge = AcknowledgeBoth(2, 0);
        window.SlotInjectHisInfo();
        QCOMPARE(test.frames.size(), 1);
        QCOMPARE(test.Status(),
                 (QStringList{"注入UTC时间命令参数异常: 12 bytes", "UTC注入失败，不再继续注入历史信息"}));
    }

    void AStaleAnswerDoesNotStandForTheTime()
    {
        SenderTest test;
        HisInfoInject window;
        test.Listen(&window);
        WriteFile("history");
        Global::ackMessage = "注入UTC时间命令发送成功";
        window.SlotInjectHisInfo();
        QCOMPARE(test.frames.size(), 1);
        QCOMPARE(test.Status(), (QStringList{"历史信息注入UTC时间 ACK超时", "UTC注入失败，不再继续注入历史信息"}));
    }

    void FilesThatCannotBeInjected_data()
    {
        QTest::addColumn<int>("size");
        QTest::addColumn<QString>("status");
        QTest::addColumn<QString>("box");
        QTest::newRow("missing") << -2 << DefaultPath() + "不存在!"
                                 << "";
        QTest::newRow("directory") << -1 << "历史信息数据文件 打开失败！"
                                   << "";
        QTest::newRow("empty") << 0 << ""
                               << "提示|文件内容为空，请检查文件是否正确";
        QTest::newRow("too long") << 15001 << "注入历史信息 组包失败！"
                                  << "";
    }

    void FilesThatCannotBeInjected()
    {
        QFETCH(int, size);
        QFETCH(QString, status);
        QFETCH(QString, box);
        SenderTest test;
        HisInfoInject window;
        test.Listen(&window);
        if (size == -1) {
            QVERIFY(QDir().mkpath(DefaultPath()));
        } else if (size >= 0) {
            WriteFile(QByteArray(size, 'h'));
        }
        BoxAnswerer answerer;
        test.acknowledge = AcknowledgeBoth(0, 0);
        window.SlotInjectHisInfo();
        if (status.isEmpty()) {
            QCOMPARE(test.Status().size(), 1);
        } else {
            QCOMPARE(test.Status().last(), status);
            QCOMPARE(test.LastIsRed(), status.contains("失败"));
        }
        QCOMPARE(answerer.boxes.join(','), box);
        QVERIFY(test.frames.size() < 2);
    }

    void ABlockedFolderIsTold()
    {
        SenderTest test;
        QFile blocker(QCoreApplication::applicationDirPath() + "/HisInfo");
        QVERIFY(blocker.open(QIODevice::WriteOnly));
        BoxAnswerer answerer;
        HisInfoInject window;
        QCOMPARE(answerer.boxes, QStringList{"ERROR|Create historyInfo filePath failed!"});
        window.OnHisInfo("x", 1);
        QCOMPARE(test.Status(), QStringList{"打开" + DefaultPath() + "失败！"});
        blocker.remove();
    }

    void TheHelpShowsTheButtonNames()
    {
        SenderTest test;
        const HisInfoInject window;
        const QString help = window.findChild<QTextEdit*>()->toPlainText();
        QVERIFY(help.contains("点击<保存历史信息>按钮\n"));
        QVERIFY(help.contains("点击<注入历史信息>按钮"));
        QCOMPARE(window.windowModality(), Qt::ApplicationModal);
    }
};

QTEST_MAIN(TestHisInfo)
#include "tst_hisinfo.moc"
