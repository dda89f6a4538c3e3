// SPDX-License-Identifier: MIT
#include "SenderTest.h"

#include "commands/CmdConfig.h"
#include "commands/CmdConfigViewWin.h"

#include <QAbstractButton>
#include <QLabel>
#include <QListView>
#include <QSignalSpy>
#include <QSpinBox>
#include <QStackedWidget>
#include <QtTest>

namespace {

/// The window with a line that keeps its frames, on a page chosen by a click.
class Bench : public SenderBench<CmdConfig> {
public:
    using SenderBench::SenderBench;

    void ClickRow(int row) const { emit list->clicked(list->model()->index(row, 0)); }
    void Set(const char* name, bool on = true) const { Find<QAbstractButton>(name)->setChecked(on); }

    QListView* list = Find<QListView>("listView");
    QStackedWidget* pages = Find<QStackedWidget>("stackedWidget");
};

} // namespace

class TestCmdConfig : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void OpensOnTheSentencesWithNothingSelected()
    {
        const Bench bench;
        QCOMPARE(bench.window->windowTitle(), QStringLiteral("命令配置"));
        QCOMPARE(bench.pages->currentIndex(), 2);
        QCOMPARE(bench.list->model()->rowCount(), 10);
        QVERIFY(bench.list->selectionModel()->selectedIndexes().isEmpty());
        for (int i = 0; i < 10; ++i) {
            QCOMPARE(bench.pages->widget(i)->findChildren<QLabel*>().first()->text(),
                     bench.list->model()->index(i, 0).data().toString());
        }
    }

    void PayloadsByteByByte()
    {
        // Of each page: what is set and taken away, then the payload. Those of pages 0 and 2 tell each box from
        // the others.
        const QStringList pages = {
            "0101010101;-bds -qzss 0100010100;-gps -bds -gal 0000010001;-glo -gal 0101000001",
            "00;ColdStart 01",
            ("-GGA 0001010101010101;-RMC -VTG -ZDA -PN 0101010100000000;-GSA -GSV -ZDA -PN 0101000001010000;"
             "-GLL -GSV -VTG -PN 0100010001000100"),
            "0102;acq_disable 0000",
            "0102;trk_disable 0000",
            "010100;-periodWork weakScan 010001;weakScan disable_ant 000000",
            "00;update_rate_5hz 01;update_rate_10hz 02",
            "=255 0000;pps_enable 0114;pps_enable =255 01ff;pps_enable =0 0100",
            "0000;nav 0001",
            "02;prio_auto 00;prio_ttff 01"};
        for (int page = 0; page < 10; ++page) {
            for (const QString& row : pages[page].split(';')) {
                QStringList items = row.split(' ');
                const QByteArray payload = QByteArray::fromHex(items.takeLast().toLatin1());
                Bench bench;
                bench.AcknowledgeWith(static_cast<quint16>(3 + page), 0);
                bench.ClickRow(page);
                for (const QString& item : items) {
                    if (item.startsWith('=')) {
                        bench.Find<QSpinBox>("pps_width")->setValue(item.midRef(1).toInt());
                    } else {
                        bench.Set(qPrintable(QString(item).remove('-')), !item.startsWith('-'));
                    }
                }
                bench.Find<QAbstractButton>("send")->click();
                QCOMPARE(FakeCodec::Calls().last(), QStringLiteral("GnssEncode %1").arg(3 + page));
                QVERIFY2(bench.frames == QList<QByteArray>{payload}, qPrintable(row));
                // The constellations go out while the state is still idle.
                QCOMPARE(bench.stateAtSend, QList<int>{page == 0 ? 4 : 5});
                QCOMPARE(Global::ackState, 4);
            }
        }
    }

    void AnswersAndTimeoutsHaveTheirWords()
    {
        const char* texts[][2] = {{"配置GNSS系统", "配置GNSS星座等待 ACK超时"},
                                  {"配置跟踪抗干扰特性", "配置跟踪抗干扰等待 ACK超时"},
                                  {"配置定位优先级模式", "配置冷启动定位优先级等待 ACK超时"}};
        for (const int page : {0, 5, 9}) {
            Bench bench;
            bench.ClickRow(page);
            bench.AcknowledgeWith(static_cast<quint16>(3 + page), 2);
            bench.window->SlotSendClicked();
            bench.acknowledge = nullptr;
            bench.window->SlotSendClicked();
            QCOMPARE(bench.Status(),
                     (QStringList{texts[(page + 1) / 4][0] + QString(" 命令参数异常"), texts[(page + 1) / 4][1]}));
            QCOMPARE(Global::ackState, 4);
        }
    }

    void WhatDoesNotEncodeIsNotSent()
    {
        Bench bench;
        FakeCodec::SetEncodeResult(-1);
        bench.window->SlotSendClicked();
        QVERIFY(bench.frames.isEmpty() && bench.Status().isEmpty() && Global::ackState == 4);
    }

    void TheReducedListOpensThePagesByRow()
    {
        Bench bench(27);
        QCOMPARE(bench.list->model()->rowCount(), 4);
        QCOMPARE(bench.list->model()->index(3, 0).data().toString(), QStringLiteral("CFG-RPT-MSG"));
        bench.ClickRow(3);
        bench.AcknowledgeWith(6, 0);
        bench.window->SlotSendClicked();
        QCOMPARE(FakeCodec::Calls().last(), QStringLiteral("GnssEncode 6"));
    }

    void ControlsFollowTheirRadios()
    {
        const Bench bench;
        for (const bool on : {true, false, true}) {
            bench.Set(on ? "pps_enable" : "pps_disable");
            QCOMPARE(bench.Find<QSpinBox>("pps_width")->isReadOnly(), !on);
            bench.Set(on ? "enable_ant" : "disable_ant");
            QCOMPARE(bench.Find<QWidget>("periodWork")->isEnabled(), on);
            QCOMPARE(bench.Find<QWidget>("weakScan")->isEnabled(), on);
        }
    }

    void TheViewMayGoAtItsSend()
    {
        for (const int page : {0, 1}) {
            Bench bench;
            bench.ClickRow(page);
            bench.acknowledge = [&bench] { delete bench.window; };
            bench.window->SlotSendClicked();
            QVERIFY(bench.window.isNull());
            QCOMPARE(Global::ackState, 4);
            QVERIFY(bench.Status().isEmpty());
        }
    }

    void TheMainWindowFormTellsItsEnd()
    {
        CmdConfigViewWin window;
        QSignalSpy closed(&window, &CmdConfigViewWin::CloseSignal);
        window.close();
        QCOMPARE(closed.size(), 1);
    }
};

QTEST_MAIN(TestCmdConfig)
#include "tst_cmdconfig.moc"
