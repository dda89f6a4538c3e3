// SPDX-License-Identifier: MIT
#include "Acknowledge.h"
#include "BoxAnswerer.h"
#include "LogCatcher.h"
#include "StandInService.h"

#include "assist/AgnssReply.h"
#include "assist/AssistOnline.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QtTest>

namespace {

using Line = OpenLine<AssistOnline>;

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
        const auto masks = [&window] {
            return qMakePair(window.RequestPara().constellation, window.RequestPara().datatype);
        };
        QCOMPARE(masks(), qMakePair(15U, 31U));
        Uncheck(window, {"Agnss_Glo", "Agnss_Utc"});
        QCOMPARE(masks(), qMakePair(13U, 29U));
        Uncheck(window, {"Agnss_Gal", "Agnss_Aux", "Agnss_Eph"});
        QCOMPARE(masks(), qMakePair(5U, 12U));
        Uncheck(window, {"Agnss_Gps", "Agnss_Rti"});
        QCOMPARE(masks(), qMakePair(4U, 4U));
    }

    void AReplyIsInjected()
    {
        Line line;
        StandInService service;
        service.AnswerWith("200 OK", Record(2, "gps") + Record(98, QByteArray(200, 'g')));
        Uncheck(*line.window, {"Agnss_Glo", "Agnss_Gal", "Agnss_Ion", "Agnss_Rti", "Agnss_Aux"});
        const LogCatcher log;
        line.Press("Agnss_ReqAndInject");
        QTRY_COMPARE_WITH_TIMEOUT(line.Status().value(4), QString("AGNSS所有辅助数据注入成功"), patience);
        QCOMPARE(line.Status().mid(0, 4),
                 (QStringList{"在线辅助数据下载成功(0KB)，准备注入", ":AGNSS注入UTC时间命令发送成功",
                              "注入AGNSS GPS星历数据命令发送成功", "注入AGNSS GAL星历数据命令发送成功"}));
        QCOMPARE(EncodedIds(), (QList<int>{1028, 771, 777}));
        QCOMPARE(line.frames.value(1), QByteArray("gps"));
        QCOMPARE(line.stateAtSend, (QList<int>{5, 5, 5}));
        QCOMPARE(Global::ackState, 4);
        const QByteArray request = service.requests.value(0);
        QVERIFY(request.startsWith(
            "GET /lumat/v1/xgnss/agnss?constellation=5&datatype=3 HTTP/1.1\r\nHost: 127.0.0.1"));
        QVERIFY2(request.contains("\r\nContent-Disposition: attachment;filename=EE.dat\r\nX-Requset-ID: uniqID\r\n"
                                  "Authorization: HMAC-SHA256 appid=qfixdemo1,timestamp="),
                 request.constData());
        QVERIFY(log.Lines().filter(service.Key()).isEmpty());
        // With nothing ticked nothing is asked.
        Uncheck(*line.window, {"Agnss_Eph", "Agnss_Utc"});
        line.window->SlotReqAndInject();
        QCOMPARE(service.requests.size(), 1);
    }

    void WithoutABodyTheDownloadFails()
    {
        const auto lastLine = [] {
            Line line;
            line.window->SlotReqAndInject();
            const bool told = QTest::qWaitFor([&line] { return !line.Status().isEmpty(); }, patience);
            return told ? line.Status().last() + (line.LastIsRed() ? " red" : "") : QString();
        };
        const QString failed = "在线辅助数据下载失败! red";
        QCOMPARE(lastLine(), failed); // no service is configured
        StandInService service;
        service.AnswerWith("401 No", "");
        QCOMPARE(lastLine(), failed);
        // A refusal's body counts as well.
        service.AnswerWith("403 No", "text");
        QCOMPARE(lastLine(), QString("AGNSS所有辅助数据注入成功"));
        // Its authority isn't trusted.
        QSslConfiguration strange = QSslConfiguration::defaultConfiguration();
        strange.setCaCertificates({});
        QSslConfiguration::setDefaultConfiguration(strange);
        QCOMPARE(lastLine(), failed);
        QCOMPARE(service.requests.size(), 2);
    }

    void AReplyThatComesTooLateIsDropped()
    {
        Line line;
        StandInService service;
        service.AnswerWith("200 OK", Record(2, "gps"));
        BoxAnswerer answerer;
        Global::serialOpen = false;
        line.window->SlotReqAndInject();
        QTRY_COMPARE_WITH_TIMEOUT(answerer.boxes, QStringList{"提示|请先打开串口"}, patience);
        QVERIFY(line.frames.isEmpty());
        // The window goes before the service answers.
        QTimer::singleShot(0, [&line] { delete line.window; });
        line.window->SlotReqAndInject();
        QTest::qWait(100);
        QCOMPARE(line.Status().size(), 1);
    }

    void ABrokenBodyStopsInSilenceAndItsCountsLiveOn()
    {
        Line line;
        const QByteArray three = Record(2, "a") + Record(34, "b") + Record(66, "c");
        line.window->InjectReply(three + "broken");
        QCOMPARE(line.frames.size(), 4);
        QCOMPARE(line.Status().size(), 4);
        QCOMPARE(line.window->Counters().totalCount, 4U);
        // A refused item of the next run shows both runs in the summary.
        line.Answer(2);
        line.window->InjectReply("tiny");
        QCOMPARE(line.Status().mid(4),
                 (QStringList{":AGNSS注入UTC时间命令参数异常", "AGNSS辅助数据注入成功 4/5!"}));
        QCOMPARE(line.window->Counters().totalCount, 0U);
    }

    void WhatTheCodecRefusesCountsForAllButGps()
    {
        Line line;
        line.AtSend(1, [] { FakeCodec::SetEncodeResult(-3); });
        const LogCatcher log;
        line.window->InjectReply(Record(6, "a") + Record(3, "a"));
        QCOMPARE(line.Status().last(), QString("AGNSS所有辅助数据注入成功"));
        QCOMPARE(log.Lines().filter("Len err"),
                 (QStringList{"ref time retLen err: -3", "agnss gps UTC retLen err: -3"}));
        // Now the time fails as well.
        line.window->InjectReply(Record(33, "a") + Record(102, "a"));
        QCOMPARE(line.Status().mid(2),
                 (QStringList{"AGNSS注入UTC时间组包失败！-3", "AGNSS辅助数据注入成功 0/2!"}));
        QCOMPARE(log.Lines().filter("Len err").mid(2),
                 (QStringList{"UTC time retLen err: -3", "agnss ganss ref time retLen err: -3",
                              "agnss ganss auxi retLen err: -3"}));
        QCOMPARE(line.frames.size(), 1);
    }

    void AnUnknownTagSendsNothingButWaits()
    {
        Line line;
        line.window->InjectReply(Record(98, "g") + Record(7, "unknown") + Record(70, "b"));
        QCOMPARE(line.frames.size(), 4);
        QVERIFY(line.frames.at(2).isEmpty());
        QCOMPARE(line.columns, (QList<int>{0, 2, 2, 1}));
        QCOMPARE(EncodedIds(), (QList<int>{1028, 777, 780}));
        // Its answer counts, its sending doesn't.
        QCOMPARE(line.Status().last(), QString("AGNSS辅助数据注入成功 4/3!"));
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
        for (const quint16 tag : {33, 5, 99, 7}) {
            QCOMPARE(InjectAgnssRecord(injector, {tag, "x"}), InjectOutcome::Sent);
        }
        QCOMPARE(passes, 4 * 151);
        QVERIFY(test.LastIsRed());
        QVERIFY(buffer != nullptr);
        QCOMPARE(test.Status(), (QStringList{"AGNSS注入GLO 预测时间 ACK超时", "AGNSS注入GPS RTI ACK超时",
                                             "AGNSS注入GAL UTC时间 ACK超时", "AGNSS注入 ACK超时"}));
        QCOMPARE(counters.totalCount, 3U);
        QCOMPARE(counters.successCount, 0U);
    }

    void APortClosedOnTheWayEndsTheRun()
    {
        Line line;
        line.AtSend(2, [] { Global::serialOpen = false; });
        line.window->InjectReply(Record(2, "a") + Record(3, "b") + Record(4, "c"));
        QCOMPARE(line.frames.size(), 2);
        QCOMPARE(line.Status().last(), QString("注入AGNSS GPS星历数据命令发送成功"));
        QCOMPARE(Global::ackState, 4);
    }

    void ASecondRunInsideTheFirstSharesItsCounts()
    {
        Line line;
        line.AtSend(2, [&line] { line.window->InjectReply(Record(2, "inner")); });
        line.window->InjectReply(Record(2, "outer") + Record(4, "outer"));
        QCOMPARE(line.frames.size(), 5);
        QCOMPARE(Global::ackState, 4);
        QCOMPARE(line.Status().filter(QRegularExpression("AGNSS(所有)?辅助数据注入成功")).size(), 2);
    }

    void TheWindowMayGoWhereverItWaits()
    {
        for (const int number : {1, 2}) {
            Line line;
            line.GoAtSend(number);
            line.window->InjectReply(Record(2, "a") + Record(3, "b"));
            QVERIFY(line.window.isNull());
            QCOMPARE(line.frames.size(), number);
            QCOMPARE(Global::ackState, 4);
        }
        // In the box about the port, and in the one about a position.
        Line line;
        Global::serialOpen = false;
        QTimer timer;
        connect(&timer, &QTimer::timeout, [&line] {
            if (QApplication::activeModalWidget() != nullptr) {
                delete line.window;
            }
        });
        timer.start(5);
        line.window->InjectReply("body");
        QVERIFY(line.window.isNull());
        line.window = new AssistOnline;
        line.window->SlotInjectLoc();
        QVERIFY(line.window.isNull());
    }

    void APositionIsCheckedAndSent()
    {
        Line line;
        BoxAnswerer answerer;
        const auto inject = [&line](const QString& lon, const QString& lat, const QString& alt) {
            TypePosition(*line.window, lon, lat, alt);
            line.Press("Agnss_InjectLoc");
        };
        line.Press("Agnss_InjectLoc");
        inject("181", "", "");
        inject("-180", "39N", "");
        inject("-180", "1e999", "");
        inject("-180", "90", "");
        QCOMPARE(answerer.boxes, (QStringList{"提示|请输入正确的经度数字", "提示|经度范围应为-180° - 180°",
                                              "提示|请输入正确的纬度数字", "提示|纬度范围应为-90° - 90°",
                                              "提示|请输入正确的高度数字"}));
        QVERIFY(line.frames.isEmpty());
        inject("-180", "90", "-12.9");
        QCOMPARE(line.frames, QList<QByteArray>{QByteArray::fromHex("00008000000080ff010000000c00000100000000")});
        QCOMPARE(EncodedIds(), QList<int>{770});
        QCOMPARE(line.Status(), QStringList{"注入AGNSS 位置预测命令发送成功"});
        FakeCodec::SetEncodeResult(-1);
        line.Press("Agnss_InjectLoc");
        QCOMPARE(line.Status().size(), 1);
        FakeCodec::SetEncodeResult(0);
        line.acknowledge = nullptr;
        line.Press("Agnss_InjectLoc");
        QCOMPARE(line.Status().last(), QString("AGNSS注入位置 ACK超时"));
        QCOMPARE(line.window->Counters().successCount, 1U);
        QCOMPARE(line.window->Counters().totalCount, 2U);
    }
};

QTEST_MAIN(TestAssistOnline)
#include "tst_online.moc"
