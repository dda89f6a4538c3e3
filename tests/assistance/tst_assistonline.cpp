#include "Acknowledge.h"
#include "BoxAnswerer.h"
#include "LogCatcher.h"
#include "StandInService.h"

#include "assist/AgnssReply.h"
#include "assist/AssistOnline.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QMessageAuthenticationCode>
#include <QPushButton>
#include <QtTest>

namespace {

constexpr int patience = 60000;

/// One record of a reply body, of at most 255 bytes.
QByteArray Record(int tag, const QByteArray& payload)
{
    QByteArray record;
    record.append(static_cast<char>(tag)).append('\0').append(static_cast<char>(payload.size())).append('\0');
    record += payload;
    int sum = 0;
    for (const char byte : qAsConst(record)) {
        sum += static_cast<quint8>(byte);
    }
    return record.append(static_cast<char>(sum));
}

void Uncheck(const QWidget& window, const QStringList& names)
{
    for (const QString& name : names) {
        window.findChild<QCheckBox*>(name)->setChecked(false);
    }
}

void TypePosition(const QWidget& window, const QString& lon, const QString& lat, const QString& alt)
{
    window.findChild<QLineEdit*>("Agnss_Lon")->setText(lon);
    window.findChild<QLineEdit*>("Agnss_Lat")->setText(lat);
    window.findChild<QLineEdit*>("Agnss_Alt")->setText(alt);
}

} // namespace

class TestAssistOnline : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void MasksFollowTheForm()
    {
        const AssistOnline window;
        const QList<QPair<QString, quint32>> constellations = {
            {"Agnss_Gps", 1}, {"Agnss_Glo", 2}, {"Agnss_Bds", 4}, {"Agnss_Gal", 8}};
        const QList<QPair<QString, quint32>> types = {
            {"Agnss_Eph", 1}, {"Agnss_Utc", 2}, {"Agnss_Ion", 4}, {"Agnss_Rti", 8}, {"Agnss_Aux", 16}};
        quint32 left = 15;
        for (const auto& box : constellations) {
            QCOMPARE(window.RequestPara().constellation, left);
            Uncheck(window, {box.first});
            left -= box.second;
        }
        QCOMPARE(window.RequestPara().constellation, 0U);
        left = 31;
        for (const auto& box : types) {
            QCOMPARE(window.RequestPara().datatype, left);
            Uncheck(window, {box.first});
            left -= box.second;
        }
        QCOMPARE(window.RequestPara().datatype, 0U);
    }

    void ARequestIsSignedAndItsReplyInjected()
    {
        SenderTest test;
        StandInService service;
        service.AnswerWith("200 OK", Record(2, "gps") + Record(98, QByteArray(200, 'g')));
        AssistOnline window;
        test.Listen(&window);
        AcknowledgeEach(test);
        Global::serialOpen = true;
        Uncheck(window, {"Agnss_Glo", "Agnss_Gal", "Agnss_Ion", "Agnss_Rti", "Agnss_Aux"});
        const LogCatcher log;
        window.findChild<QPushButton*>("Agnss_ReqAndInject")->click();
        QTRY_COMPARE_WITH_TIMEOUT(test.Status().value(4), QString("AGNSS所有辅助数据注入成功"), patience);
        QCOMPARE(test.Status().mid(0, 4),
                 (QStringList{"在线辅助数据下载成功(0KB)，准备注入", ":AGNSS注入UTC时间命令发送成功",
                              "注入AGNSS GPS星历数据命令发送成功", "注入AGNSS GAL星历数据命令发送成功"}));
        QCOMPARE(EncodedIds(), (QList<int>{1028, 771, 777}));
        QCOMPARE(test.frames.value(1), QByteArray("gps"));
        QCOMPARE(test.stateAtSend, (QList<int>{5, 5, 5}));
        QCOMPARE(Global::ackState, 4);

        const QByteArray request = service.requests.value(0);
        const QByteArray query = "constellation=5&datatype=3";
        QVERIFY(request.startsWith("GET /lumat/v1/xgnss/agnss?" + query + " HTTP/1.1\r\nHost: "));
        QVERIFY(
            request.contains("\r\nContent-Disposition: attachment;filename=EE.dat\r\nX-Requset-ID: uniqID\r\n"));
        const QRegularExpressionMatch match =
            QRegularExpression("Authorization: HMAC-SHA256 appid=qfixdemo1,timestamp=(\\d+),signature=(\\S{44})$")
                .match(request);
        QVERIFY2(match.hasMatch(), request.constData());
        const QByteArray raw =
            "GET&/lumat/v1/xgnss/agnss&" + query + "&&appid=qfixdemo1&timestamp=" + match.captured(1).toUtf8();
        QCOMPARE(match.captured(2).toUtf8(),
                 QMessageAuthenticationCode::hash(raw, service.Key(), QCryptographicHash::Sha256).toBase64());
        QVERIFY(log.Lines().filter(service.Key()).isEmpty());
    }

    void WhatTheServiceAnswersDecides_data()
    {
        QTest::addColumn<QByteArray>("status");
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QString>("line");
        QTest::newRow("empty") << QByteArray("200 OK") << QByteArray() << "在线辅助数据下载失败!";
        QTest::newRow("empty error") << QByteArray("401 No") << QByteArray() << "在线辅助数据下载失败!";
        QTest::newRow("error with a body")
            << QByteArray("403 No") << QByteArray("text") << "AGNSS所有辅助数据注入成功";
        QTest::newRow("redirect") << QByteArray("302 Found\r\nLocation: /x") << QByteArray()
                                  << "在线辅助数据下载失败!";
        QTest::newRow("large") << QByteArray("200 OK") << QByteArray(50 << 20, 'x')
                               << ":AGNSS注入UTC时间命令发送成功";
    }

    void WhatTheServiceAnswersDecides()
    {
        QFETCH(QByteArray, status);
        QFETCH(QByteArray, body);
        QFETCH(QString, line);
        SenderTest test;
        StandInService service;
        service.AnswerWith(status, body);
        AssistOnline window;
        test.Listen(&window);
        AcknowledgeEach(test);
        Global::serialOpen = true;
        window.SlotReqAndInject();
        QTRY_COMPARE_WITH_TIMEOUT(test.Status().value(test.Status().size() - 1), line, patience);
        QCOMPARE(test.LastIsRed(), line.contains("失败"));
    }

    void WithoutAServiceTheDownloadFails()
    {
        SenderTest test;
        AssistOnline window;
        window.SlotReqAndInject();
        QTRY_COMPARE_WITH_TIMEOUT(test.Status(), QStringList{"在线辅助数据下载失败!"}, patience);
    }

    void NothingTickedAsksNothing()
    {
        SenderTest test;
        StandInService service;
        AssistOnline window;
        Uncheck(window, {"Agnss_Eph", "Agnss_Utc", "Agnss_Ion", "Agnss_Rti", "Agnss_Aux"});
        const LogCatcher log;
        window.SlotReqAndInject();
        QVERIFY(log.Lines().isEmpty());
    }

    void AClosedPortDropsTheBody()
    {
        SenderTest test;
        AssistOnline window;
        test.Listen(&window);
        BoxAnswerer answerer;
        window.InjectReply(Record(2, "gps"));
        QCOMPARE(answerer.boxes, QStringList{"提示|请先打开串口"});
        QVERIFY(test.frames.isEmpty());
    }

    void ABrokenBodyStopsInSilenceAndItsCountsLiveOn()
    {
        SenderTest test;
        AssistOnline window;
        test.Listen(&window);
        AcknowledgeEach(test);
        Global::serialOpen = true;
        const QByteArray three = Record(2, "a") + Record(34, "b") + Record(66, "c");
        window.InjectReply(three + "broken");
        QCOMPARE(test.frames.size(), 4);
        QCOMPARE(test.Status().size(), 4);
        QCOMPARE(window.Counters().totalCount, 4U);
        // A refused item of the next run shows both runs in the summary.
        AcknowledgeEach(test, 2);
        window.InjectReply("tiny");
        QCOMPARE(test.Status().mid(4),
                 (QStringList{":AGNSS注入UTC时间命令参数异常", "AGNSS辅助数据注入成功 4/5!"}));
        QCOMPARE(window.Counters().totalCount, 0U);
    }

    void WhatTheCodecRefusesCountsForAllButGps()
    {
        SenderTest test;
        AssistOnline window;
        test.Listen(&window);
        AcknowledgeEach(test);
        AtSend(test, 1, [] { FakeCodec::SetEncodeResult(-3); });
        Global::serialOpen = true;
        const LogCatcher log;
        window.InjectReply(Record(6, "a") + Record(3, "a"));
        QCOMPARE(test.Status().last(), QString("AGNSS所有辅助数据注入成功"));
        QCOMPARE(log.Lines().filter("Len err"),
                 (QStringList{"ref time retLen err: -3", "agnss gps UTC retLen err: -3"}));

        // Now the time fails as well.
        window.InjectReply(Record(33, "a") + Record(102, "a"));
        QCOMPARE(test.Status().mid(2),
                 (QStringList{"AGNSS注入UTC时间组包失败！-3", "AGNSS辅助数据注入成功 0/2!"}));
        QCOMPARE(log.Lines().filter("Len err").mid(2),
                 (QStringList{"UTC time retLen err: -3", "agnss ganss ref time retLen err: -3",
                              "agnss ganss auxi retLen err: -3"}));
        QCOMPARE(test.frames.size(), 1);
    }

    void AnUnknownTagSendsNothingButWaits()
    {
        SenderTest test;
        AssistOnline window;
        test.Listen(&window);
        AcknowledgeEach(test);
        QList<int> columns;
        test.acknowledge = [&columns, before = test.acknowledge] {
            columns.append(Global::ackTableColumn);
            before();
        };
        Global::serialOpen = true;
        window.InjectReply(Record(98, "g") + Record(7, "unknown") + Record(70, "b"));
        QCOMPARE(test.frames.size(), 4);
        QVERIFY(test.frames.at(2).isEmpty());
        QCOMPARE(columns, (QList<int>{0, 2, 2, 1}));
        QCOMPARE(EncodedIds(), (QList<int>{1028, 777, 780}));
        // Its answer counts, its sending doesn't.
        QCOMPARE(test.Status().last(), QString("AGNSS辅助数据注入成功 4/3!"));
    }

    void ASilentReceiverIsNamedItemByItem()
    {
        SenderTest test;
        QObject sender;
        InjectCounters counters;
        int passes = 0;
        const uint8_t* buffer = nullptr;
        const Injector injector(
            &sender, [&buffer](uint8_t* data, int) { buffer = data; }, &counters,
            [&passes](int milliseconds) {
                QCOMPARE(milliseconds, 10);
                ++passes;
            });
        QCOMPARE(InjectAgnssRecord(injector, {33, "x"}), InjectOutcome::Sent);
        QCOMPARE(passes, 151);
        QVERIFY(test.LastIsRed());
        InjectAgnssRecord(injector, {5, "x"});
        InjectAgnssRecord(injector, {99, "x"});
        InjectAgnssRecord(injector, {7, "x"});
        QVERIFY(buffer != nullptr);
        QCOMPARE(test.Status(), (QStringList{"AGNSS注入GLO 预测时间 ACK超时", "AGNSS注入GPS RTI ACK超时",
                                             "AGNSS注入GAL UTC时间 ACK超时", "AGNSS注入 ACK超时"}));
        QCOMPARE(counters.totalCount, 3U);
        QCOMPARE(counters.successCount, 0U);
    }

    void APortClosedOnTheWayEndsTheRun()
    {
        SenderTest test;
        AssistOnline window;
        test.Listen(&window);
        AcknowledgeEach(test);
        AtSend(test, 2, [] { Global::serialOpen = false; });
        Global::serialOpen = true;
        window.InjectReply(Record(2, "a") + Record(3, "b") + Record(4, "c"));
        QCOMPARE(test.frames.size(), 2);
        QCOMPARE(test.Status().last(), QString("注入AGNSS GPS星历数据命令发送成功"));
        QCOMPARE(Global::ackState, 4);
    }

    void ASecondRunInsideTheFirstSharesItsCounts()
    {
        SenderTest test;
        AssistOnline window;
        test.Listen(&window);
        AcknowledgeEach(test);
        AtSend(test, 2, [&window] { window.InjectReply(Record(2, "inner")); });
        Global::serialOpen = true;
        window.InjectReply(Record(2, "outer") + Record(4, "outer"));
        QCOMPARE(test.frames.size(), 5);
        QCOMPARE(EncodedIds().size(), 5);
        QCOMPARE(Global::ackState, 4);
        QCOMPARE(test.Status().filter("AGNSS所有辅助数据注入成功").size() +
                     test.Status().filter("AGNSS辅助数据注入成功").size(),
                 2);
    }

    void TheWindowMayGoInsideItsOwnReply()
    {
        SenderTest test;
        StandInService service;
        service.AnswerWith("200 OK", Record(2, "a") + Record(3, "b"));
        QPointer<AssistOnline> window = new AssistOnline;
        test.Listen(window.data());
        AcknowledgeEach(test);
        test.acknowledge = [&test, window, first = test.acknowledge] {
            if (test.frames.size() == 1) {
                first();
            } else {
                QTimer::singleShot(30, [window] { delete window; });
            }
        };
        Global::serialOpen = true;
        window->SlotReqAndInject();
        QTRY_VERIFY_WITH_TIMEOUT(window.isNull(), patience);
        QTest::qWait(50);
        QCOMPARE(Global::ackState, 4);
    }

    void APositionIsCheckedAndSent()
    {
        SenderTest test;
        AssistOnline window;
        test.Listen(&window);
        AcknowledgeEach(test);
        BoxAnswerer answerer;
        auto* button = window.findChild<QPushButton*>("Agnss_InjectLoc");
        button->click();
        TypePosition(window, "181", "", "");
        button->click();
        TypePosition(window, "-180", "39N", "");
        button->click();
        TypePosition(window, "-180", "1e999", "");
        button->click();
        TypePosition(window, "-180", "90", "");
        button->click();
        QCOMPARE(answerer.boxes, (QStringList{"提示|请输入正确的经度数字", "提示|经度范围应为-180° - 180°",
                                              "提示|请输入正确的纬度数字", "提示|纬度范围应为-90° - 90°",
                                              "提示|请输入正确的高度数字"}));
        QVERIFY(test.frames.isEmpty());
        TypePosition(window, "-180", "90", "-12.9");
        button->click();
        QCOMPARE(test.frames, QList<QByteArray>{QByteArray::fromHex("00008000000080ff010000000c00000100000000")});
        QCOMPARE(EncodedIds(), QList<int>{770});
        QCOMPARE(test.Status(), QStringList{"注入AGNSS 位置预测命令发送成功"});
        FakeCodec::SetEncodeResult(-1);
        button->click();
        QCOMPARE(test.Status().size(), 1);
        FakeCodec::SetEncodeResult(0);
        test.acknowledge = nullptr;
        button->click();
        QCOMPARE(test.Status().last(), QString("AGNSS注入位置 ACK超时"));
        QCOMPARE(window.Counters().successCount, 1U);
        QCOMPARE(window.Counters().totalCount, 2U);
    }

    void TheWindowMayGoInABox()
    {
        SenderTest test;
        QPointer<AssistOnline> window = new AssistOnline;
        QTimer timer;
        connect(&timer, &QTimer::timeout, [&window] {
            if (QApplication::activeModalWidget() != nullptr) {
                delete window;
            }
        });
        timer.start(5);
        window->SlotInjectLoc();
        QVERIFY(window.isNull());
        window = new AssistOnline;
        window->InjectReply("body");
        QVERIFY(window.isNull());
    }
};

QTEST_MAIN(TestAssistOnline)
#include "tst_assistonline.moc"
