// SPDX-License-Identifier: MIT
#include "Acknowledge.h"
#include "BoxAnswerer.h"
#include "FileDialogAnswerer.h"

#include "assist/HisInfoInject.h"

#include <QFile>
#include <QLineEdit>
#include <QTextEdit>
#include <QtTest>

namespace {

using Line = OpenLine<HisInfoInject>;

} // namespace

class TestHisInfo : public QObject {
    Q_OBJECT

private:
    static QString DefaultPath() { return QCoreApplication::applicationDirPath() + "/HisInfo/HisInfo.bin"; }

    static void WriteFile(const QByteArray& content)
    {
        QDir().mkpath(QFileInfo(DefaultPath()).path());
        QFile file(DefaultPath());
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

private Q_SLOTS:
    void init() { QDir(QCoreApplication::applicationDirPath() + "/HisInfo").removeRecursively(); }

    void TheRequestGoesOutAndItsReportIsSaved()
    {
        SenderTest test;
        HisInfoInject window;
        test.Listen(&window);
        QVERIFY(window.findChild<QTextEdit*>()->toPlainText().contains("点击<保存历史信息>按钮\n"));
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

    void TheWindowMayGoWhereverItWaits()
    {
        WriteFile("history");
        for (const int number : {1, 2}) {
            Line line;
            line.GoAtSend(number);
            line.window->SlotInjectHisInfo();
            QVERIFY(line.window.isNull());
            QCOMPARE(line.frames.size(), number);
            QCOMPARE(Global::ackState, 4);
            QVERIFY(line.Status().filter("超时").isEmpty());
        }
        // At the send itself: of the time, and of the request.
        for (auto slot : {&HisInfoInject::SlotInjectHisInfo, &HisInfoInject::SlotSendRptHisInfoCmd}) {
            Line line;
            line.acknowledge = [&line] { delete line.window; };
            (line.window->*slot)();
            QVERIFY(line.window.isNull());
        }
        // In the dialog, and in the box about an empty file.
        Line line;
        {
            const FileDialogAnswerer answerer({}, [&line] { delete line.window; });
            line.window->SlotSelectHisInfoFilePath();
        }
        QVERIFY(line.window.isNull());
        line.window = new HisInfoInject;
        line.Listen(line.window.data());
        WriteFile("");
        QTimer timer;
        connect(&timer, &QTimer::timeout, [&line] {
            if (QApplication::activeModalWidget() != nullptr) {
                delete line.window;
            }
        });
        timer.start(5);
        line.window->SlotInjectHisInfo();
        QVERIFY(line.window.isNull());
    }

    void AFileIsInjectedAfterTheTime()
    {
        Line line;
        WriteFile("history");
        line.window->SlotInjectHisInfo();
        QCOMPARE(EncodedIds(), (QList<int>{1028, 257}));
        QCOMPARE(line.frames.at(0).mid(10), QByteArray("\1\0", 2));
        QCOMPARE(line.frames.at(1), QByteArray("history"));
        QCOMPARE(line.stateAtSend, (QList<int>{5, 5}));
        QCOMPARE(line.Status(), (QStringList{"注入UTC时间命令发送成功: 12 bytes", "读取历史文件成功：7 bytes",
                                             "注入历史信息命令发送成功: 7 bytes"}));
        QCOMPARE(Global::ackState, 4);
    }

    void WithoutTheTimeThereIsNoHistory()
    {
        const QString end = "UTC注入失败，不再继续注入历史信息";
        Line line(2);
        WriteFile("history");
        line.window->SlotInjectHisInfo();
        QCOMPARE(line.Status(), (QStringList{"注入UTC时间命令参数异常: 12 bytes", end}));
        // An answer of before does not stand for the time.
        line.acknowledge = nullptr;
        Global::ackMessage = "注入UTC时间命令发送成功";
        line.window->SlotInjectHisInfo();
        QCOMPARE(line.Status().mid(2), (QStringList{"历史信息注入UTC时间 ACK超时", end}));
        QCOMPARE(line.frames.size(), 2);
    }

    void FilesThatCannotBeInjected()
    {
        const struct {
            int size; ///< -1: a directory, -2: none
            QString status;
            QString box;
        } rows[] = {{-2, DefaultPath() + "不存在!", ""},
                    {-1, "历史信息数据文件 打开失败！", ""},
                    {0, "注入UTC时间命令发送成功: 12 bytes", "提示|文件内容为空，请检查文件是否正确"},
                    {15001, "注入历史信息 组包失败！", ""}};
        for (const auto& row : rows) {
            init();
            Line line;
            if (row.size == -1) {
                QVERIFY(QDir().mkpath(DefaultPath()));
            } else if (row.size >= 0) {
                WriteFile(QByteArray(row.size, 'h'));
            }
            BoxAnswerer answerer;
            line.window->SlotInjectHisInfo();
            QCOMPARE(line.Status().last(), row.status);
            QCOMPARE(line.LastIsRed(), row.status.contains("失败"));
            QCOMPARE(answerer.boxes.join(','), row.box);
            QVERIFY(line.frames.size() < 2);
        }
    }

    void ABlockedFolderIsTold()
    {
        QFile blocker(QCoreApplication::applicationDirPath() + "/HisInfo");
        QVERIFY(blocker.open(QIODevice::WriteOnly));
        BoxAnswerer answerer;
        Line line;
        QCOMPARE(answerer.boxes, QStringList{"ERROR|Create historyInfo filePath failed!"});
        line.window->OnHisInfo("x", 1);
        QCOMPARE(line.Status(), QStringList{"打开" + DefaultPath() + "失败！"});
        blocker.remove();
    }
};

QTEST_MAIN(TestHisInfo)
#include "tst_hisinfo.moc"
