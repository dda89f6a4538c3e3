// SPDX-License-Identifier: MIT
#include "protocol/NmeaScan.h"

#include <QRandomGenerator>
#include <QtTest>

#include <vector>

namespace {

using Sentences = QByteArrayList;

Sentences Scan(const QByteArray& bytes, int blockSize, protocol::NmeaEnding ending = protocol::EndsInChecksum)
{
    protocol::NmeaBuff buff{};
    Sentences found;
    for (int i = 0; i < bytes.size(); i += blockSize) {
        // A copy of exact size, so that a sanitizer sees every byte that is read too many.
        const QByteArray piece = bytes.mid(i, blockSize);
        const std::vector<char> block(piece.begin(), piece.end());
        const char* p = block.data();
        protocol::NmeaSentence sentence;
        while (protocol::NextNmeaSentence(buff, p, block.data() + block.size(), ending, sentence)) {
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
        } else if (!text.isEmpty()) {
            text += c;
            const int n = text.size();
            if (n > 127) {
                text.clear();
            } else if (n > 9 && c == '\n' && text[n - 2] == '\r' && (!checksum || text[n - 5] == '*')) {
                found.append(text);
                text.clear();
            }
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
    void Shapes()
    {
        const QPair<QByteArray, Sentences> rows[] = {
            {OfLength(9), {}},
            {OfLength(10), {OfLength(10)}},
            {OfLength(127), {OfLength(127)}},
            {OfLength(128), {}},
            {"$a*12\r\nb*12\r\n", {"$a*12\r\nb*12\r\n"}}, // a short one goes on
            {"$GPGGA,1,2,3$GPGGA,1,2*12\n$GPGGA,1,2,12\r\n" + OfLength(20), {OfLength(20)}},
            {"$GPGGA,1\r\n\x80\xff\n*\xff\n\r\n", {"$GPGGA,1\r\n\x80\xff\n*\xff\n\r\n"}},
            {OfLength(127).left(126) + 'x' + OfLength(12), {OfLength(12)}},
            {QByteArray(100000, '$') + OfLength(1000000) + OfLength(12), {OfLength(12)}}};
        for (const auto& [bytes, sentences] : rows) {
            QCOMPARE(ScanBytewise(bytes, true), sentences);
            for (int blockSize = 1; blockSize <= bytes.size();
                 blockSize = bytes.size() < 1000 ? blockSize + 1 : blockSize * 7) {
                QCOMPARE(Scan(bytes, blockSize), sentences);
            }
        }
    }

    /// Bytes of few kinds, so that all shapes come near each other.
    void FindsWhatTheByteRuleFinds()
    {
        QRandomGenerator random(1);
        const auto below = [&random](int n) { return static_cast<int>(random.bounded(n)); };
        const QByteArray kinds("$$*\r\n\nabcdefghij", 16);
        int found = 0;
        for (int round = 0; round < 400; ++round) {
            QByteArray bytes;
            while (bytes.size() < 1500) {
                const int kind = below(6);
                bytes += kind == 0   ? OfLength(6 + below(130))
                         : kind == 1 ? QByteArray(below(140), 'z')
                         : kind == 2 ? QByteArray("*12\r\n")
                                     : QByteArray(1, kinds[below(16)]);
            }
            const int blockSize = 1 + below(600);
            const Sentences expected = ScanBytewise(bytes, true);
            QCOMPARE(Scan(bytes, blockSize), expected);
            QCOMPARE(Scan(bytes, blockSize, protocol::EndsInLine), ScanBytewise(bytes, false));
            found += expected.size();
        }
        QVERIFY(found > 1000);
    }
};

QTEST_GUILESS_MAIN(TestNmeaScan)
#include "tst_nmeascan.moc"
