// SPDX-License-Identifier: MIT
#include "BoxAnswerer.h"
#include "SenderTest.h"

#include "line/SerialLink.h"
#include "window/PositioningControl.h"

#include <QWidget>
#include <QtTest>

class TestWindowPositioningControl : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// Of the answers only an acceptance starts, but each arms the clock; silence does neither.
    void TheAnswerDecides()
    {
        struct Row {
            int status; ///< -1: none comes
            bool started;
            bool armed;
        };
        for (const Row& row : {Row{0, true, true}, Row{3, false, true}, Row{-1, false, false}}) {
            SenderTest test;
            QWidget window;
            SerialLink link;
            PositioningControl control(link, &window);
            int changes = 0;
            int cleared = 0;
            connect(&control, &PositioningControl::Changed, this, [&changes] { ++changes; });
            connect(&control, &PositioningControl::LogsCleared, this, [&cleared] { ++cleared; });
            test.Listen(&control);
            if (row.status >= 0) {
                test.AcknowledgeWith(1, static_cast<quint16>(row.status));
            }
            Global::firstFixText = "9s";
            control.StartOrStop();
            QCOMPARE(test.frames.size(), 1);
            QCOMPARE(test.frames[0],
                     QByteArray::fromHex("7e04190001000300 00000c00 01000000 0100 0100 00000000 7e"));
            QCOMPARE(Global::positioningStarted, row.started);
            QCOMPARE(Global::firstFixText.isEmpty(), row.armed);
            QCOMPARE(changes, row.started ? 1 : 0);
            QCOMPARE(cleared, 1);
            QCOMPARE(Global::ackState, 4);
        }
    }

    void TheFirstFixIsTakenOnceAndNotOfAReplay()
    {
        SenderTest test;
        QWidget window;
        SerialLink link;
        PositioningControl control(link, &window);
        Global::startInstant = QDateTime::currentDateTime().addMSecs(-5120);
        control.TakeFirstFix();
        const QString first = Global::firstFixText;
        QVERIFY2(first.startsWith("5.0"), qPrintable(first));
        Global::startInstant = QDateTime::currentDateTime();
        control.TakeFirstFix();
        QCOMPARE(Global::firstFixText, first);
        Global::replayRunning = true;
        control.TakeFirstFix();
        QCOMPARE(Global::firstFixText, QStringLiteral("0s"));
    }

    void StopIsTakenAsDoneAndTwiceIsTold()
    {
        SenderTest test;
        QWidget window;
        SerialLink link;
        PositioningControl control(link, &window);
        test.Listen(&control);
        Global::positioningStarted = true;
        control.Stop();
        QCOMPARE(test.frames, QList<QByteArray>{QByteArray::fromHex("7e040d0002000000000000007e")});
        QVERIFY(!Global::positioningStarted);
        const BoxAnswerer box;
        control.Stop();
        QCOMPARE(box.boxes, QStringList{"错误|当前已经停止，请勿重复触发！"});
        QCOMPARE(test.frames.size(), 1);
    }
};

QTEST_MAIN(TestWindowPositioningControl)

#include "tst_positioningcontrol.moc"
