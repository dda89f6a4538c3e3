#include "main/AckWait.h"
#include "main/CommandTexts.h"
#include "main/GnssAck.h"
#include "main/ProcessState.h"

#include <QAbstractEventDispatcher>
#include <QtTest>

namespace {

void Acknowledge(quint16 id, quint16 status)
{
    const CbRecvAckType record = {id, status};
    GnssAck().ProcAck(&record, sizeof(record));
}

/// A pump that counts its passes and acknowledges in one of them (0 = never).
struct CountingPump {
    int passes = 0;
    int acknowledgeIn = 0;

    void operator()(int milliseconds)
    {
        QCOMPARE(milliseconds, 10);
        ++passes;
        if (passes == acknowledgeIn) {
            Acknowledge(3, 0);
        }
    }
};

} // namespace

class TestAckWait : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { Global::ResetForNewWindow(); }

    void AnswersAndTimeoutsByPasses_data()
    {
        QTest::addColumn<int>("limit");
        QTest::addColumn<int>("acknowledgeIn");
        QTest::addColumn<bool>("answered");
        QTest::addColumn<int>("passes");
        QTest::newRow("first pass") << 1500 << 1 << true << 1;
        QTest::newRow("at the limit") << 1500 << 150 << true << 150;
        QTest::newRow("in the last pass") << 1500 << 151 << false << 151;
        QTest::newRow("never") << 1500 << 0 << false << 151;
        QTest::newRow("start: at the limit") << 1000 << 100 << true << 100;
        QTest::newRow("start: too late") << 1000 << 101 << false << 101;
    }

    void AnswersAndTimeoutsByPasses()
    {
        QFETCH(int, limit);
        QFETCH(int, acknowledgeIn);
        QFETCH(bool, answered);
        QFETCH(int, passes);
        CountingPump pump;
        pump.acknowledgeIn = acknowledgeIn;
        const AckWait wait;
        QCOMPARE(Global::ackState, 5);
        const AckResult result = wait.Run(this, limit, std::ref(pump));
        QCOMPARE(result.outcome, answered ? AckOutcome::Answered : AckOutcome::TimedOut);
        QCOMPARE(pump.passes, passes);
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

    void AStaleAckIsNoAnswer()
    {
        Acknowledge(3, 0);
        CountingPump pump;
        const AckWait wait;
        QCOMPARE(wait.Run(this, 1000, std::ref(pump)).outcome, AckOutcome::TimedOut);
    }

    void NestedWaitsEndOnTheSameAck()
    {
        int outerPasses = 0;
        AckResult inner;
        const AckWait outer;
        const AckResult result = outer.Run(this, 1500, [&](int) {
            if (++outerPasses == 3) {
                CountingPump pump;
                pump.acknowledgeIn = 5;
                const AckWait wait;
                inner = wait.Run(this, 1500, std::ref(pump));
                AckWait::Finish();
            }
        });
        QCOMPARE(inner.outcome, AckOutcome::Answered);
        QCOMPARE(result.outcome, AckOutcome::Answered);
        QCOMPARE(result.state, 0);
        QCOMPARE(result.message, inner.message);
        QCOMPARE(outerPasses, 3);
    }

    void ASenderThatGoesEndsItsWait()
    {
        auto* sender = new QObject;
        int passes = 0;
        const AckWait wait;
        const AckResult result = wait.Run(sender, 1500, [&](int) {
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

    void AckRecordsGiveStateAndWords_data()
    {
        QTest::addColumn<int>("id");
        QTest::addColumn<int>("status");
        QTest::addColumn<int>("column");
        QTest::addColumn<int>("state");
        QTest::addColumn<QString>("words");
        QTest::newRow("start") << 1 << 0 << 0 << 0 << "启动GNSS定位命令发送成功";
        QTest::newRow("stop, length") << 2 << 1 << 0 << 1 << "关闭GNSS定位命令长度异常";
        QTest::newRow("configuration begins with a blank") << 12 << 2 << 0 << 2 << " 命令参数异常";
        QTest::newRow("refused") << 1028 << 3 << 0 << 3 << "注入UTC时间命令错误";
        QTest::newRow("status 7") << 257 << 7 << 0 << -1 << "注入历史信息未知错误";
        QTest::newRow("status 65535") << 257 << 65535 << 0 << -1 << "注入历史信息未知错误";
        QTest::newRow("QZS") << 516 << 0 << 3 << 0 << "注入PGNSS QZS星历命令发送成功";
        QTest::newRow("no text in the column") << 775 << 0 << 3 << 0 << "暂不支持的命令！命令发送成功";
        QTest::newRow("blank only in column 0") << 3 << 0 << 1 << 0 << "暂不支持的命令！命令发送成功";
        QTest::newRow("unknown id") << 512 << 0 << 0 << 0 << "未知命令!命令发送成功";
        QTest::newRow("column too large") << 516 << 0 << 4 << 0 << "未知命令!命令发送成功";
    }

    void AckRecordsGiveStateAndWords()
    {
        QFETCH(int, id);
        QFETCH(int, status);
        QFETCH(int, column);
        QFETCH(int, state);
        QFETCH(QString, words);
        Global::ackTableColumn = static_cast<quint8>(column);
        Acknowledge(static_cast<quint16>(id), static_cast<quint16>(status));
        QCOMPARE(Global::ackState, state);
        QCOMPARE(Global::ackMessage, words);
    }

    void ShortRecordsAreIgnored()
    {
        const std::unique_ptr<char[]> bytes(new char[3]());
        for (quint32 length = 0; length < 4; ++length) {
            GnssAck().ProcAck(bytes.get(), length);
        }
        GnssAck().ProcAck(nullptr, 4);
        QCOMPARE(Global::ackState, 4);
        QCOMPARE(Global::ackCount, 0U);
    }

    void StatesHaveTheirWords()
    {
        QCOMPARE(AckStatusText(4), QStringLiteral("无命令发送"));
        QCOMPARE(AckStatusText(5), QStringLiteral("命令发送中"));
        QCOMPARE(AckStatusText(6), QStringLiteral("未知命令!"));
    }

    void PumpDelayRunsTheLoopForItsTime()
    {
        int ticks = 0;
        QTimer timer;
        connect(&timer, &QTimer::timeout, [&ticks] { ++ticks; });
        timer.start(10);
        QElapsedTimer clock;
        clock.start();
        int rounds = 0;
        connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::awake, &timer,
                [&rounds] { ++rounds; });
        PumpDelay(100);
        QVERIFY(clock.elapsed() >= 99);
        QVERIFY(ticks > 0);
        // It pauses between its rounds and doesn't spin.
        QVERIFY2(rounds > 0 && rounds < 500, qPrintable(QString::number(rounds)));
    }
};

QTEST_GUILESS_MAIN(TestAckWait)
#include "tst_ackwait.moc"
