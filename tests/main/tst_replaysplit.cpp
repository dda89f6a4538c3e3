#include "main/ReplaySplit.h"

#include <QtTest>

class TestReplaySplit : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void ChunksRunFromGgaToGga_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QList<QByteArray>>("chunks");
        using Chunks = QList<QByteArray>;
        QTest::newRow("empty") << QByteArray() << Chunks();
        QTest::newRow("no GGA") << QByteArray("$GPRMC,1\r\n$GPVTG\r\n") << Chunks();
        QTest::newRow("one at the beginning") << QByteArray("$GPGGA,1\r\n") << Chunks();
        QTest::newRow("three") << QByteArray("$GPGGA,1\r\n$GPRMC\r\n$GPGGA,2\r\n$GNGGA,3\r\n")
                               << Chunks{"$GPGGA,1\r\n$GPRMC\r\n", "$GPGGA,2\r\n"};
        QTest::newRow("text before the first") << QByteArray("noise$GPGGA,1\r\n") << Chunks{"noise"};
        QTest::newRow("capture cut in the talker")
            << QByteArray("GPGGA,1\r\n$GPGGA,2\r\n") << Chunks{"GPGGA,1\r\n"};
        QTest::newRow("capture cut before the type") << QByteArray("GGA,1\r\n$GPGGA,2\r\n") << Chunks{"GGA,1\r\n"};
        QTest::newRow("ends in the type") << QByteArray("ab$GPGG") << Chunks();
        QTest::newRow("binary and NUL stay in")
            << QByteArray("\0\xff$GPGGA,1\0\r\n$GPGGA", 21)
            << Chunks{QByteArray("\0\xff", 2), QByteArray("$GPGGA,1\0\r\n", 11)};
        QTest::newRow("GGGA") << QByteArray("ab$GGGA,1$GPGGA") << Chunks{"a", "b$GGGA,1"};
    }

    void ChunksRunFromGgaToGga()
    {
        QFETCH(QByteArray, file);
        QFETCH(QList<QByteArray>, chunks);
        QCOMPARE(SplitCapture(file), chunks);
    }

    void SpeedsGiveWholeMilliseconds_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("interval");
        QTest::newRow("0.25") << "0.25" << 4000;
        QTest::newRow("1") << "1" << 1000;
        QTest::newRow("8") << "8" << 125;
        QTest::newRow("16") << "16" << 62;
        QTest::newRow("fastest") << "最大速度" << 16;
    }

    void SpeedsGiveWholeMilliseconds()
    {
        QFETCH(QString, text);
        QFETCH(int, interval);
        QCOMPARE(ReplayIntervalMs(ReplaySpeedValue(text, "最大速度")), interval);
    }
};

QTEST_GUILESS_MAIN(TestReplaySplit)
#include "tst_replaysplit.moc"
