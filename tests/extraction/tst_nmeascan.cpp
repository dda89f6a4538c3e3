#include "production/NmeaScan.h"

#include <QDir>
#include <QRandomGenerator>
#include <QtTest>

namespace {

using Sentences = QByteArrayList;

Sentences Scan(const QByteArray& bytes, int blockSize, NmeaEnding ending = EndsInChecksum)
{
    NmeaBuff buff{};
    Sentences found;
    for (int i = 0; i < bytes.size(); i += blockSize) {
        const QByteArray block = bytes.mid(i, blockSize);
        const char* p = block.constData();
        NmeaSentence sentence;
        while (NextNmeaSentence(buff, p, block.constData() + block.size(), ending, sentence)) {
            found.append(QByteArray(sentence.text, static_cast<int>(sentence.length)));
        }
    }
    return found;
}

/// The same rule byte by byte.
Sentences ScanBytewise(const QByteArray& bytes, bool checksum)
{
    Sentences found;
    QByteArray text;
    for (const char c : bytes) {
        if (c == '$') {
            text = "$";
            continue;
        }
        if (text.isEmpty()) {
            continue;
        }
        text += c;
        const int n = text.size();
        if (n <= 9) {
            continue;
        }
        if (n > 127) {
            text.clear();
        } else if (c == '\n' && text[n - 2] == '\r' && (!checksum || text[n - 5] == '*')) {
            found.append(text);
            text.clear();
        }
    }
    return found;
}

/// A sentence of `length` bytes.
QByteArray OfLength(int length)
{
    return '$' + QByteArray(length - 6, 'x') + "*12\r\n";
}

} // namespace

class TestNmeaScan : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void Shapes_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<Sentences>("sentences");
        QTest::newRow("9 bytes are too few") << OfLength(9) << Sentences();
        QTest::newRow("10 bytes") << OfLength(10) << Sentences{OfLength(10)};
        QTest::newRow("127 bytes") << OfLength(127) << Sentences{OfLength(127)};
        QTest::newRow("128 bytes are too many") << OfLength(128) << Sentences();
        QTest::newRow("a short one goes on") << QByteArray("$a*12\r\nb*12\r\n") << Sentences{"$a*12\r\nb*12\r\n"};
        QTest::newRow("cut short") << "$GPGGA,1,2,3" + OfLength(20) << Sentences{OfLength(20)};
        QTest::newRow("no CR") << "$GPGGA,1,2*12\n" + OfLength(20) << Sentences{OfLength(20)};
        QTest::newRow("no star") << "$GPGGA,1,2,12\r\n" + OfLength(20) << Sentences{OfLength(20)};
        QTest::newRow("no star, then one")
            << QByteArray("$GPGGA,1\r\nnoise*00\r\n") << Sentences{"$GPGGA,1\r\nnoise*00\r\n"};
        QTest::newRow("any two bytes") << QByteArray("$GPGGA,1*\xff\n\r\n") << Sentences{"$GPGGA,1*\xff\n\r\n"};
        QTest::newRow("binary inside") << QByteArray("$GP\0\x80\xff\n,1*00\r\n", 14)
                                       << Sentences{QByteArray("$GP\0\x80\xff\n,1*00\r\n", 14)};
        QTest::newRow("byte 128 begins a new one")
            << OfLength(127).left(126) + 'x' + OfLength(12) << Sentences{OfLength(12)};
        QTest::newRow("behind one that is too long")
            << OfLength(1000000) + OfLength(12) << Sentences{OfLength(12)};
        QTest::newRow("noise only") << QByteArray(100000, '\x7e') << Sentences();
        QTest::newRow("dollars only") << QByteArray(100000, '$') << Sentences();
    }

    void Shapes()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(Sentences, sentences);
        QCOMPARE(ScanBytewise(bytes, true), sentences);
        const int largest = qMin(bytes.size(), 300);
        for (int blockSize = 1; blockSize <= largest;
             blockSize = bytes.size() < 1000 ? blockSize + 1 : blockSize * 7) {
            QCOMPARE(Scan(bytes, blockSize), sentences);
        }
        QCOMPARE(Scan(bytes, qMax(1, bytes.size())), sentences);
    }

    /// Bytes of few kinds, so that all shapes come near each other.
    void FindsWhatTheByteRuleFinds()
    {
        QRandomGenerator random(1);
        const QByteArray kinds("$$*\r\n\nabcdefghij", 16);
        int found = 0;
        for (int round = 0; round < 400; ++round) {
            QByteArray bytes;
            while (bytes.size() < 1500) {
                switch (random.bounded(6)) {
                case 0:
                    bytes += OfLength(6 + static_cast<int>(random.bounded(130U)));
                    break;
                case 1:
                    bytes += QByteArray(static_cast<int>(random.bounded(140U)), 'z');
                    break;
                case 2:
                    bytes += "*12\r\n";
                    break;
                default:
                    bytes += kinds[static_cast<int>(random.bounded(16U))];
                }
            }
            const int blockSize = 1 + static_cast<int>(random.bounded(600U));
            const Sentences expected = ScanBytewise(bytes, true);
            QCOMPARE(Scan(bytes, blockSize), expected);
            QCOMPARE(Scan(bytes, blockSize, EndsInLine), ScanBytewise(bytes, false));
            found += expected.size();
        }
        QVERIFY(found > 1000);
    }

    void CapturesGiveTheirLines()
    {
        const QStringList names = QDir(QStringLiteral(GNSS_CAPTURES)).entryList({"*.log"});
        if (names.isEmpty()) {
            QSKIP("no captures here");
        }
        for (const QString& name : names) {
            QFile file(QStringLiteral(GNSS_CAPTURES) + '/' + name);
            QVERIFY(file.open(QIODevice::ReadOnly));
            const QByteArray bytes = file.readAll();
            QCOMPARE(Scan(bytes, 500), ScanBytewise(bytes, true));
        }
    }
};

QTEST_GUILESS_MAIN(TestNmeaScan)
#include "tst_nmeascan.moc"
