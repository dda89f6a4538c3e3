// SPDX-License-Identifier: MIT
#include "line/ReplaySplit.h"

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
    void ChunksRunFromGgaToGga()
    {
        const QList<QPair<QByteArray, Chunks>> rows = {
            {"", {}},
            {"$GPRMC,1\r\n$GPVTG\r\n", {}},
            {"$GPGGA,1\r\n", {}},
            {"$GPGGA,1\r\n$GPRMC\r\n$GPGGA,2\r\n$GNGGA,3\r\n", {"$GPGGA,1\r\n$GPRMC\r\n", "$GPGGA,2\r\n"}},
            {"noise$GPGGA,1\r\n", {"noise"}},
            // The capture begins inside a sentence.
            {"GPGGA,1\r\n$GPGGA,2\r\n", {"GPGGA,1\r\n"}},
            {"GGA,1\r\n$GPGGA,2\r\n", {"GGA,1\r\n"}},
            {"ab$GPGG", {}},
            {QByteArray("\0\xff$GPGGA,1\0\r\n$GPGGA", 19), {{"\0\xff", 2}, {"$GPGGA,1\0\r\n", 11}}},
            {"ab$GGGA,1$GPGGA", {"a", "b$GGGA,1"}},
            {"$GPGGAGGAGGA", {"$GP", "GGA"}}};
        for (auto row : rows) {
            QBuffer buffer(&row.first);
            QVERIFY(buffer.open(QIODevice::ReadOnly));
            QCOMPARE(SplitCapture(buffer), row.second);
            for (int blockSize = 1; blockSize <= row.first.size(); ++blockSize) {
                QCOMPARE(SplitInBlocks(row.first, blockSize), row.second);
            }
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
};

QTEST_GUILESS_MAIN(TestReplaySplit)
#include "tst_replaysplit.moc"
