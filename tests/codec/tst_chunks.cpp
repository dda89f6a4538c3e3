// SPDX-License-Identifier: MIT
#include "Collector.h"
#include "Files.h"

#include <QDir>
#include <QtTest>

#include <random>

namespace {

using Random = std::mt19937;

QByteArray Noise(Random& random, int length)
{
    QByteArray noise(length, '\0');
    for (char& c : noise) {
        c = char(random() & 0xFF);
    }
    return noise;
}

/// Sentences, frames of all kinds, false frame headers, AT lines and noise, a
/// third of them cut or with another inside.
QByteArray Mixture(unsigned seed)
{
    Random random(seed);
    const auto below = [&random](int n) { return int(random() % unsigned(n)); };
    const auto ack = [](char id) { return Frame(protocol::RptAck, QByteArray(1, id) + QByteArray(3, '\0')); };
    QByteArray all;
    QByteArray last;
    for (int i = 0; i < 900; ++i) {
        const QByteArray time = QByteArray::number(100000 + i / 15 % 60) + ".00";
        const QByteArray place = ",4527.458,S,16709.165,E,";
        const QByteArray lineEnd = QByteArrayList{"\r\n", "\n", "\r\r\n", "\r"}[below(4)];
        const QByteArray pieces[] = {
            Sentence("GPRMC," + time + ",A" + place + "000.0,094.5,060601,024.1,E", lineEnd),
            Sentence("GPGGA," + time + place + "1,05,2.1,14.7,M,1.1,M,,", lineEnd),
            Sentence("GPGGA," + time + place + "1,05", lineEnd).replace("GGA,1", "GGA,2"), // wrong checksum
            Sentence("GPGSV,1,1,02,01,78,221,47,03,09,042," + QByteArray::number(below(50)), lineEnd),
            Sentence("PERC,GPppf,+03.0,+GNSSHEY,+001.1,0,18,0", lineEnd),
            Sentence("GPTXT,01,01,02," + QByteArray(below(1100), 'a'), lineEnd), ack('\1'),
            Frame(protocol::RptSleep, "\1"), Frame(protocol::RptHistory, Noise(random, 40), below(2), 2),
            // Contents that look like the beginnings of everything else.
            Frame(protocol::RptMessage + protocol::MsgTypeMeas,
                  (Sentence("GPRMC,1,2") + "~\x04+GNSSHEX:7e\r\n$" + Noise(random, 4416)).left(4416)),
            Frame(protocol::RptAck, Noise(random, below(300))).chopped(1) + 'x', // no end flag
            "+GNSSHEX:" + ack('\2').toHex() + lineEnd, "$GPGGA,1+GNSSHEX:" + ack('\3').toHex() + "\r\n",
            Noise(random, below(200))};
        const QByteArray piece = pieces[below(14)];
        const int cut = below(piece.size() + 1);
        const int how = below(6);
        all += how == 0 ? piece.left(cut) : how == 1 ? piece.left(cut) + last + piece.mid(cut) : piece;
        last = piece;
    }
    return all;
}

} // namespace

class ChunksTest : public QObject {
    Q_OBJECT

private slots:
    void AnyDivisionGivesTheSame_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        const QDir folder(QStringLiteral(GNSS_CAPTURES));
        for (const QString& name : folder.entryList({"*.log"}, QDir::Files)) {
            QTest::newRow(qPrintable(name)) << Content(folder.filePath(name));
        }
        for (unsigned seed = 1; seed <= 4; ++seed) {
            QTest::newRow(qPrintable(QStringLiteral("mixture %1").arg(seed))) << Mixture(seed);
        }
    }

    void AnyDivisionGivesTheSame()
    {
        QFETCH(QByteArray, bytes);
        Link reference;
        reference.Say(bytes);
        const codec::LinkCounters& expected = reference.codec.Counters();
        QCOMPARE(expected.bytes, quint64(bytes.size()));
        if (QByteArray(QTest::currentDataTag()).startsWith("mixture")) {
            QVERIFY(expected.sentences > 20 && expected.frames > 100 && expected.checksumErrors > 10);
            QVERIFY(reference.got.Count(protocol::CB_HIS_INFO) > 0 && reference.got.Count(protocol::CB_ACK) > 50 &&
                    reference.got.Count(protocol::CB_DATA) > 20);
        }

        Random random(7);
        for (const int largest : {1, 2, 3, 16, 90, 1000, 5000}) {
            Link link;
            for (int at = 0; at < bytes.size();) {
                const int size = largest <= 3 ? largest : 1 + int(random() % unsigned(largest));
                // A copy of exact size, so that a sanitizer sees every byte that is
                // read too many.
                const QByteArray chunk = bytes.mid(at, size);
                const std::vector<quint8> exact(chunk.begin(), chunk.end());
                link.codec.Decode(exact.data(), exact.size());
                at += chunk.size();
            }
            QCOMPARE(link.got.slots_, reference.got.slots_);
            QCOMPARE(link.got.whole, reference.got.whole);
            QCOMPARE(link.got.numbers, reference.got.numbers);
            QCOMPARE(link.got.images, reference.got.images);
            QVERIFY(!link.got.overfull);
            const codec::LinkCounters& counters = link.codec.Counters();
            QVERIFY(counters.bytes == expected.bytes && counters.sentences == expected.sentences &&
                    counters.checksumErrors == expected.checksumErrors && counters.frames == expected.frames &&
                    counters.droppedBytes == expected.droppedBytes);
        }
    }

    void HostileBytesAreSurvived()
    {
        Random random(3);
        Link link;
        for (int i = 0; i < 2000; ++i) {
            link.Say(Noise(random, 10000));
        }
        QCOMPARE(link.codec.Counters().bytes, quint64(20000000));
        QCOMPARE(link.got.Fixes(true).size(), 0);
        link.Say(QByteArray(1000000, '\0') + QByteArray(1000000, '$'));
        // Each twelve bytes are a header that claims the largest frame: the worst
        // case of reading again.
        const QByteArray header = Frame(1, QByteArray(int(protocol::kMaxFramePayload), '\0')).left(12);
        const QByteArray headers = header.repeated(2000000 / 12);
        for (int at = 0; at < headers.size(); at += 997) {
            link.Say(headers.mid(at, 997));
        }
        // Whatever was held back by then, the link recovers within the largest
        // frame.
        link.Say(QByteArray(int(protocol::kMaxFrameLength), '\n'));
        const int before = link.got.whole.size();
        link.Say(Sentence("GPTXT,01,01,02,alive"));
        QCOMPARE(link.got.whole.size(), before + 1);
    }
};

QTEST_GUILESS_MAIN(ChunksTest)
#include "tst_chunks.moc"
