// SPDX-License-Identifier: MIT
#include "base/AckWait.h"
#include "base/GnssAck.h"
#include "base/ProcessState.h"

#include <QAbstractEventDispatcher>
#include <QtTest>

namespace {

void Acknowledge(int id, int status)
{
    const CbRecvAckType record = {static_cast<quint16>(id), static_cast<quint16>(status)};
    GnssAck().ProcAck(&record, sizeof(record));
}

/// A pump that counts its passes and acknowledges in one of them (0 = never).
struct CountingPump {
    int acknowledgeIn = 0;
    int passes = 0;

    void operator()(int milliseconds)
    {
        QCOMPARE(milliseconds, 10);
        if (++passes == acknowledgeIn) {
            Acknowledge(3, 0);
        }
    }
};

} // namespace

class TestAckWait : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { Global::ResetForNewWindow(); }

    void AnswersAndTimeoutsByPasses()
    {
        const struct {
            int limit, acknowledgeIn, passes;
            bool answered;
        } rows[] = {{1500, 1, 1, true},    {1500, 150, 150, true}, {1500, 151, 151, false},
                    {1500, 0, 151, false}, {1000, 100, 100, true}, {1000, 101, 101, false}};
        Acknowledge(3, 0); // an old one is no answer
        for (const auto& row : rows) {
            CountingPump pump{row.acknowledgeIn};
            const AckWait wait;
            QCOMPARE(Global::ackState, 5);
            const AckResult result = wait.Run(this, row.limit, std::ref(pump));
            QCOMPARE(result.outcome, row.answered ? AckOutcome::Answered : AckOutcome::TimedOut);
            QCOMPARE(pump.passes, row.passes);
        }
    }

    void AnAckBeforeTheFirstPauseCountsAtOnce()
    {
        CountingPump pump;
        const AckWait wait(1);
        Acknowledge(516, 2);
        const AckResult result = wait.Run(this, 1500, std::ref(pump));
        QCOMPARE(result.outcome, AckOutcome::Answered);
        QCOMPARE(result.state, 2);
        QCOMPARE(result.message, QStringLiteral("注入PGNSS BDS星历命令参数异常"));
        QCOMPARE(pump.passes, 0);
    }

    void ASenderThatGoesEndsItsWait()
    {
        auto* sender = new QObject;
        int passes = 0;
        const AckResult result = AckWait().Run(sender, 1500, [&](int) {
            if (++passes == 2) {
                delete sender;
            }
        });
        QCOMPARE(result.outcome, AckOutcome::SenderGone);
        QCOMPARE(passes, 2);
        QCOMPARE(Global::ackState, 4);

        // One that is gone at its send doesn't wait, whatever has come meanwhile.
        CountingPump pump;
        const AckWait late;
        Acknowledge(3, 0);
        QCOMPARE(late.Run(nullptr, 1500, std::ref(pump)).outcome, AckOutcome::SenderGone);
        QCOMPARE(pump.passes, 0);
        QCOMPARE(Global::ackState, 4);
    }

    void AckRecordsGiveStateAndWords()
    {
        const struct {
            int id, status, column, state;
            const char* words;
        } rows[] = {
            {2, 1, 0, 1, "关闭GNSS定位命令长度异常"},        {1028, 3, 0, 3, "注入UTC时间命令错误"},
            {257, 7, 0, -1, "注入历史信息未知错误"},         {257, 65535, 0, -1, "注入历史信息未知错误"},
            {516, 0, 3, 0, "注入PGNSS QZS星历命令发送成功"}, {775, 0, 3, 0, "暂不支持的命令！命令发送成功"},
            {3, 0, 1, 0, "暂不支持的命令！命令发送成功"},    {512, 0, 0, 0, "未知命令!命令发送成功"},
            {516, 0, 4, 0, "未知命令!命令发送成功"}};
        for (const auto& row : rows) {
            Global::ackTableColumn = static_cast<quint8>(row.column);
            Acknowledge(row.id, row.status);
            QCOMPARE(Global::ackState, row.state);
            QCOMPARE(Global::ackMessage, QString(row.words));
        }
    }

    void ShortRecordsAreIgnored()
    {
        const std::vector<char> bytes(3);
        for (const quint32 length : {0, 1, 2, 3}) {
            GnssAck().ProcAck(bytes.data(), length);
        }
        GnssAck().ProcAck(nullptr, 4);
        QVERIFY(Global::ackState == 4 && Global::ackCount == 0);
    }

    void PumpDelayRunsTheLoopAndDoesNotSpin()
    {
        int rounds = 0;
        connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::awake, this, [&] { ++rounds; });
        QElapsedTimer clock;
        clock.start();
        PumpDelay(100);
        QVERIFY(clock.elapsed() >= 99);
        QVERIFY2(rounds > 0 && rounds < 500, qPrintable(QString::number(rounds)));
        QAbstractEventDispatcher::instance()->disconnect(this);
    }
};

QTEST_GUILESS_MAIN(TestAckWait)
#include "tst_ackwait.moc"
