#include "SenderTest.h"

#include "config/CmdConfig.h"
#include "config/CmdConfigViewWin.h"

#include <QAbstractButton>
#include <QLabel>
#include <QListView>
#include <QSignalSpy>
#include <QSpinBox>
#include <QStackedWidget>
#include <QtTest>

namespace {

template <typename Widget> Widget* Find(const QWidget& window, const char* name)
{
    return window.findChild<Widget*>(QLatin1String(name));
}

void Set(const QWidget& window, const char* name, bool on = true)
{
    auto* button = Find<QAbstractButton>(window, name);
    QVERIFY2(button != nullptr, name);
    button->setChecked(on);
}

/// Clicks a row of the list as a user does.
void ClickRow(const QWidget& window, int row)
{
    auto* list = Find<QListView>(window, "listView");
    emit list->clicked(list->model()->index(row, 0));
}

} // namespace

class TestCmdConfig : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void OpensOnTheSentencesWithNothingSelected()
    {
        SenderTest test;
        const CmdConfig window(nullptr);
        QCOMPARE(window.windowTitle(), QStringLiteral("命令配置"));
        QCOMPARE(Find<QStackedWidget>(window, "stackedWidget")->currentIndex(), 2);
        auto* list = Find<QListView>(window, "listView");
        QCOMPARE(list->model()->rowCount(), 10);
        QVERIFY(list->selectionModel()->selectedIndexes().isEmpty());
        QCOMPARE(list->maximumWidth(), 120);
        const QStringList pages = {"page",   "page_10", "page_11", "page_2", "page_3",
                                   "page_5", "page_4",  "page_6",  "page_7", "page_8"};
        for (int i = 0; i < pages.size(); ++i) {
            QWidget* page = Find<QStackedWidget>(window, "stackedWidget")->widget(i);
            QCOMPARE(page->objectName(), pages.at(i));
            QCOMPARE(page->findChildren<QLabel*>().first()->text(), list->model()->index(i, 0).data().toString());
        }
    }

    void PayloadsByteByByte_data()
    {
        QTest::addColumn<int>("page");
        QTest::addColumn<QStringList>("set");
        QTest::addColumn<int>("id");
        QTest::addColumn<QByteArray>("payload");
        auto row = [](const char* name, int page, const QStringList& set, int id, const char* hex) {
            QTest::newRow(name) << page << set << id << QByteArray::fromHex(hex);
        };
        row("all constellations", 0, {}, 3, "0101010101");
        row("no BDS, no QZSS", 0, {"-bds", "-qzss"}, 3, "0100010100");
        row("none", 0, {"-gps", "-bds", "-glo", "-gal", "-qzss"}, 3, "0000000000");
        row("automatic start", 1, {}, 4, "00");
        row("cold start", 1, {"ColdStart"}, 4, "01");
        row("only GGA", 2, {"-RMC", "-GLL", "-VTG", "-GSA", "-ZDA", "-GSV", "-PN"}, 5, "0100000000000000");
        row("only GLL", 2, {"-GGA", "-RMC", "-VTG", "-GSA", "-ZDA", "-GSV", "-PN"}, 5, "0001000000000000");
        row("only RMC and PN", 2, {"-GGA", "-GLL", "-VTG", "-GSA", "-ZDA", "-GSV"}, 5, "0000000001000001");
        row("only GSA", 2, {"-GGA", "-RMC", "-GLL", "-VTG", "-ZDA", "-GSV", "-PN"}, 5, "0000010000000000");
        row("only GSV and ZDA", 2, {"-GGA", "-RMC", "-GLL", "-VTG", "-GSA", "-PN"}, 5, "0000000100000100");
        row("only VTG", 2, {"-GGA", "-RMC", "-GLL", "-GSA", "-ZDA", "-GSV", "-PN"}, 5, "0000000000010000");
        row("acquisition low power", 3, {}, 6, "0102");
        row("acquisition full power", 3, {"acq_disable"}, 6, "0000");
        row("tracking low power", 4, {}, 7, "0102");
        row("tracking full power", 4, {"trk_disable"}, 7, "0000");
        row("scan", 5, {}, 8, "010100");
        row("fine scan", 5, {"-periodWork", "weakScan"}, 8, "010001");
        row("no scan", 5, {"weakScan", "disable_ant"}, 8, "000000");
        row("1 Hz", 6, {}, 9, "00");
        row("5 Hz", 6, {"update_rate_5hz"}, 9, "01");
        row("10 Hz", 6, {"update_rate_10hz"}, 9, "02");
        row("no PPS", 7, {"=255"}, 10, "0000");
        row("PPS", 7, {"pps_enable"}, 10, "0114");
        row("PPS of 255 ms", 7, {"pps_enable", "=255"}, 10, "01ff");
        row("PPS of 0 ms", 7, {"pps_enable", "=0"}, 10, "0100");
        row("no reports", 8, {}, 11, "0000");
        row("positions", 8, {"nav"}, 11, "0001");
        row("accuracy first", 9, {}, 12, "02");
        row("automatic priority", 9, {"prio_auto"}, 12, "00");
        row("TTFF first", 9, {"prio_ttff"}, 12, "01");
    }

    void PayloadsByteByByte()
    {
        QFETCH(int, page);
        QFETCH(QStringList, set);
        QFETCH(int, id);
        QFETCH(QByteArray, payload);
        SenderTest test;
        CmdConfig window(nullptr);
        test.Listen(&window);
        test.AcknowledgeWith(static_cast<quint16>(id), 0);
        ClickRow(window, page);
        for (const QString& item : set) {
            if (item.startsWith('=')) {
                Find<QSpinBox>(window, "pps_width")->setValue(item.midRef(1).toInt());
            } else {
                const bool off = item.startsWith('-');
                Set(window, item.mid(off ? 1 : 0).toLatin1().constData(), !off);
            }
        }
        Find<QAbstractButton>(window, "send")->click();
        QCOMPARE(FakeCodec::Calls().last(), QStringLiteral("GnssEncode %1").arg(id));
        QCOMPARE(test.frames, QList<QByteArray>{payload});
        // The constellations go out while the state is still idle.
        QCOMPARE(test.stateAtSend, QList<int>{page == 0 ? 4 : 5});
        QCOMPARE(Global::ackState, 4);
    }

    void AnswersAndTimeoutsHaveTheirWords_data()
    {
        QTest::addColumn<int>("page");
        QTest::addColumn<QString>("answer");
        QTest::addColumn<QString>("timeout");
        const QList<QPair<const char*, const char*>> texts = {
            {"配置GNSS系统", "配置GNSS星座等待 ACK超时"},
            {"配置冷热启动模式", "配置启动方式等待 ACK超时"},
            {"配置NMEA语句模式", "配置NMEA语句类型等待 ACK超时"},
            {"配置捕获低功耗", "配置捕获低功耗等待 ACK超时"},
            {"配置跟踪低功耗", "配置跟踪低功耗等待 ACK超时"},
            {"配置跟踪抗干扰特性", "配置跟踪抗干扰等待 ACK超时"},
            {"配置定位频率", "配置定位频率等待 ACK超时"},
            {"配置PPS特性", "配置PPS等待 ACK超时"},
            {"配置消息的上报类型", "配置芯片上报消息等待 ACK超时"},
            {"配置定位优先级模式", "配置冷启动定位优先级等待 ACK超时"}};
        for (int i = 0; i < texts.size(); ++i) {
            QTest::addRow("page %d", i) << i << texts.at(i).first << texts.at(i).second;
        }
    }

    void AnswersAndTimeoutsHaveTheirWords()
    {
        QFETCH(int, page);
        QFETCH(QString, answer);
        QFETCH(QString, timeout);
        SenderTest test;
        CmdConfig window(nullptr);
        test.Listen(&window);
        ClickRow(window, page);
        test.AcknowledgeWith(static_cast<quint16>(3 + page), 2);
        window.SlotSendClicked();
        QCOMPARE(test.Status(), QStringList{answer + " 命令参数异常"});
        if (page % 5 == 0) {
            test.acknowledge = nullptr;
            window.SlotSendClicked();
            QCOMPARE(test.Status().last(), timeout);
        } else {
            QCOMPARE(ConfigPageText(ConfigPageAt(page).timeoutText), timeout);
        }
        QCOMPARE(Global::ackState, 4);
    }

    void WhatDoesNotEncodeIsNotSent()
    {
        SenderTest test;
        CmdConfig window(nullptr);
        test.Listen(&window);
        FakeCodec::SetEncodeResult(-1);
        window.SlotSendClicked();
        QVERIFY(test.frames.isEmpty());
        QVERIFY(test.Status().isEmpty());
        QCOMPARE(Global::ackState, 4);
    }

    void TheReducedListOpensThePagesByRow()
    {
        SenderTest test(27);
        CmdConfig window(nullptr);
        test.Listen(&window);
        auto* list = Find<QListView>(window, "listView");
        QCOMPARE(list->model()->rowCount(), 4);
        QCOMPARE(list->model()->index(3, 0).data().toString(), QStringLiteral("CFG-RPT-MSG"));
        ClickRow(window, 3);
        QCOMPARE(Find<QStackedWidget>(window, "stackedWidget")->currentWidget()->objectName(),
                 QStringLiteral("page_2"));
        test.AcknowledgeWith(6, 0);
        window.SlotSendClicked();
        QCOMPARE(FakeCodec::Calls().last(), QStringLiteral("GnssEncode 6"));
    }

    void ControlsFollowTheirRadios()
    {
        SenderTest test;
        const CmdConfig window(nullptr);
        auto* width = Find<QSpinBox>(window, "pps_width");
        QVERIFY(width->isReadOnly());
        Set(window, "pps_enable");
        QVERIFY(!width->isReadOnly());
        Set(window, "pps_disable");
        QVERIFY(width->isReadOnly());
        Set(window, "disable_ant");
        QVERIFY(!Find<QWidget>(window, "periodWork")->isEnabled() &&
                !Find<QWidget>(window, "weakScan")->isEnabled());
        Set(window, "enable_ant");
        QVERIFY(Find<QWidget>(window, "periodWork")->isEnabled() &&
                Find<QWidget>(window, "weakScan")->isEnabled());
    }

    void TheViewMayGoInsideItsWait()
    {
        SenderTest test;
        auto* window = new CmdConfig(nullptr);
        window->setAttribute(Qt::WA_DeleteOnClose);
        window->show();
        test.Listen(window);
        test.acknowledge = [window] { QTimer::singleShot(30, window, &QWidget::close); };
        QPointer<CmdConfig> guard(window);
        window->SlotSendClicked();
        QVERIFY(guard.isNull());
        QCOMPARE(Global::ackState, 4);
        QVERIFY(test.Status().isEmpty());
    }

    void TheViewMayGoAtItsSend()
    {
        for (const int page : {0, 1}) {
            SenderTest test;
            QPointer<CmdConfig> window = new CmdConfig(nullptr);
            test.Listen(window.data());
            ClickRow(*window, page);
            test.acknowledge = [window] { delete window; };
            window->SlotSendClicked();
            QVERIFY(window.isNull());
            QCOMPARE(Global::ackState, 4);
            QVERIFY(test.Status().isEmpty());
        }
    }

    void TheMainWindowFormTellsItsEnd()
    {
        SenderTest test;
        CmdConfigViewWin window;
        QVERIFY(window.findChild<CmdConfig*>() != nullptr);
        QSignalSpy closed(&window, &CmdConfigViewWin::CloseSignal);
        window.show();
        window.close();
        QCOMPARE(closed.size(), 1);
    }
};

QTEST_MAIN(TestCmdConfig)
#include "tst_cmdconfig.moc"
