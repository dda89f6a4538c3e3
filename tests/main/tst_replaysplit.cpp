#include "main/ReplaySplit.h"

#include <QBuffer>
#include <QtTest>

using Chunks = QList<QByteArray>;

namespace {

Chunks SplitInBlocks(const QByteArray& file, int blockSize, int longestChunk = CaptureSplitter::kLongestChunk)
{
    CaptureSplitter splitter(longestChunk);
    for (int i = 0; i < file.size(); i += blockSize) {
        splitter.Take(file.mid(i, blockSize));
    }
    return splitter.TakeChunks();
}

} // namespace

class TestReplaySplit : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void ChunksRunFromGgaToGga_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<Chunks>("chunks");
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
            << QByteArray("\0\xff$GPGGA,1\0\r\n$GPGGA", 19)
            << Chunks{QByteArray("\0\xff", 2), QByteArray("$GPGGA,1\0\r\n", 11)};
        QTest::newRow("GGGA") << QByteArray("ab$GGGA,1$GPGGA") << Chunks{"a", "b$GGGA,1"};
        QTest::newRow("one right behind the other") << QByteArray("$GPGGAGGAGGA") << Chunks{"$GP", "GGA"};
    }

    void ChunksRunFromGgaToGga()
    {
        QFETCH(QByteArray, file);
        QFETCH(Chunks, chunks);
        QBuffer buffer(&file);
        QVERIFY(buffer.open(QIODevice::ReadOnly));
        QCOMPARE(SplitCapture(buffer), chunks);
        for (int blockSize = 1; blockSize <= file.size(); ++blockSize) {
            QCOMPARE(SplitInBlocks(file, blockSize), chunks);
        }
    }

    /// What one array cannot hold goes out in pieces, and no byte is lost.
    void EndlessNoiseIsCut()
    {
        const QByteArray noise(5000, '\x55');
        const QByteArray file = noise + "$GPGGA,1\r\n" + noise + "$GPGGA,2\r\n";
        for (const int blockSize : {1, 7, 100, 12000}) {
            const Chunks chunks = SplitInBlocks(file, blockSize, 1000);
            QVERIFY(blockSize == 12000 || chunks.size() >= 10);
            QCOMPARE(chunks.join(), noise + "$GPGGA,1\r\n" + noise);
        }
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
