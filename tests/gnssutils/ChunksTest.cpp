#include "Collector.h"

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

/// Sentences, frames of all kinds, frames inside sentences, false frame headers, AT lines and noise.
QByteArray Mixture(unsigned seed)
{
    Random random(seed);
    const auto below = [&random](unsigned n) { return int(random() % n); };
    QByteArray all;
    int second = 0;
    for (int i = 0; i < 600; ++i) {
        const QByteArray time = QByteArray::number(100000 + second / 60 * 100 + second % 60);
        const QByteArray lineEnd = QByteArrayList{"\r\n", "\n", "\r\r\n", "\r"}[below(4)];
        switch (below(15)) {
        case 0:
            ++second;
            all += Sentence("GPRMC," + time + ".00,A,4527.458,S,16709.165,E,000.0,094.5,060601,024.1,E", lineEnd);
            break;
        case 1:
            all += Sentence("GPGGA," + time + ".00,4527.458,S,16709.165,E,1,05,2.1,14.7,M,1.1,M,,", lineEnd);
            break;
        case 2:
            all += Sentence("GPGSV,1,1,02,01,78,221,47,03,09,042," + QByteArray::number(below(50)), lineEnd);
            break;
        case 3:
            all += Frame(gnss::RptAck, QByteArray("\x01\x00\x00\x00", 4));
            break;
        case 4:
            // Contents that look like the beginnings of everything else.
            all += Frame(quint16(gnss::RptMessage + gnss::MsgTypeMeas),
                         (Sentence("GPRMC,1,2") + "~\x04+GNSSHEX:7e\r\n$" + Noise(random, 4416)).left(4416));
            break;
        case 5:
            all += Noise(random, below(200));
            break;
        case 6: {
            const QByteArray whole =
                Sentence("GPGGA," + time + ".00,4527.458,S,16709.165,E,1,05,2.1,9.7,M,1.1,M,,");
            const int cut = below(unsigned(whole.size()));
            all += whole.left(cut) + Frame(gnss::RptSleep, QByteArray(1, '\x01')) + whole.mid(cut);
            break;
        }
        case 7:
            // A header that agrees with itself and has no end flag.
            all += Frame(gnss::RptAck, Noise(random, below(300))).chopped(1) + 'x';
            break;
        case 8:
            all += "+GNSSHEX:" + Frame(gnss::RptAck, QByteArray("\x02\x00\x00\x00", 4)).toHex() + lineEnd;
            break;
        case 9:
            all += Sentence("PERC,GPppf,+03.0,+GNSSHEY,+001.1,0,18,0", lineEnd);
            break;
        case 10:
            all += Sentence("GPGLL,4527.458,S,16709.165,E," + time + ",A").left(5 + below(40));
            break;
        case 11:
            all += "$GPGGA,1+GNSSHEX:" + Frame(gnss::RptAck, QByteArray("\x03\x00\x01\x00", 4)).toHex() + "\r\n";
            break;
        case 12:
            all +=
                Sentence("GPGGA," + time + ".00,4527.458,S,16709.165,E,1,05", lineEnd).replace("GGA,1", "GGA,2");
            break;
        case 13:
            all += Sentence("GPTXT,01,01,02," + QByteArray(below(1100), 'a'), lineEnd);
            break;
        default:
            all += Frame(gnss::RptHistory, Noise(random, 40), quint16(below(2)), 2);
        }
    }
    return all;
}

} // namespace

class ChunksTest : public QObject {
    Q_OBJECT

private slots:
    void AnyDivisionGivesTheSame_data();
    void AnyDivisionGivesTheSame();
    void RandomBytesAreSurvived();
    void HostileFlagsAreSurvived();
};

void ChunksTest::AnyDivisionGivesTheSame_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const QDir folder(QStringLiteral(GNSS_CAPTURES));
    for (const QString& name : folder.entryList({"*.log"}, QDir::Files)) {
        QTest::newRow(qPrintable(name)) << ReadAll(folder.filePath(name));
    }
    for (unsigned seed = 1; seed <= 4; ++seed) {
        QTest::newRow(qPrintable(QStringLiteral("mixture %1").arg(seed))) << Mixture(seed);
    }
}

void ChunksTest::AnyDivisionGivesTheSame()
{
    QFETCH(QByteArray, bytes);
    Collector reference;
    gnss::Codec referenceCodec(&reference);
    Feed(referenceCodec, bytes);
    const gnss::LinkCounters& expected = referenceCodec.Counters();
    QVERIFY(expected.sentences > 20 && !reference.images.isEmpty());
    if (QByteArray(QTest::currentDataTag()).startsWith("mixture")) {
        QVERIFY(expected.frames > 100 && expected.checksumErrors > 10);
        QVERIFY(reference.Count(CB_HIS_INFO) > 0 && reference.Count(CB_ACK) > 50 && reference.fixes.size() > 20);
    }

    Random random(7);
    for (const int largest : {1, 2, 3, 16, 90, 1000, 5000}) {
        Collector got;
        gnss::Codec codec(&got);
        for (int at = 0; at < bytes.size();) {
            const int size = largest <= 3 ? largest : 1 + int(random() % unsigned(largest));
            // A copy of exact size, so that a sanitizer sees every byte that is read too many.
            const QByteArray chunk(bytes.constData() + at, qMin(size, bytes.size() - at));
            const std::vector<quint8> exact(chunk.begin(), chunk.end());
            codec.Decode(exact.data(), exact.size());
            at += chunk.size();
        }
        QCOMPARE(got.slots_, reference.slots_);
        QCOMPARE(got.whole, reference.whole);
        QCOMPARE(got.numbers, reference.numbers);
        QCOMPARE(got.images, reference.images);
        QVERIFY(!got.overfull);
        const gnss::LinkCounters& counters = codec.Counters();
        QCOMPARE(counters.bytes, expected.bytes);
        QCOMPARE(counters.sentences, expected.sentences);
        QCOMPARE(counters.checksumErrors, expected.checksumErrors);
        QCOMPARE(counters.frames, expected.frames);
        QCOMPARE(counters.droppedBytes, expected.droppedBytes);
    }
}

void ChunksTest::RandomBytesAreSurvived()
{
    Random random(3);
    Collector got;
    gnss::Codec codec(&got);
    for (int i = 0; i < 2000; ++i) {
        Feed(codec, Noise(random, 10000));
    }
    QCOMPARE(codec.Counters().bytes, quint64(20000000));
    QCOMPARE(got.ValidFixes().size(), 0);
    Feed(codec, QByteArray(1000000, '\0'));
    Feed(codec, QByteArray(1000000, '$'));
    // Whatever was held back by then, the link recovers within the largest frame.
    Feed(codec, QByteArray(int(gnss::kMaxFrameLength), '\n'));
    const int before = got.whole.size();
    Feed(codec, Sentence("GPTXT,01,01,02,alive"));
    QCOMPARE(got.whole.size(), before + 1);
}

void ChunksTest::HostileFlagsAreSurvived()
{
    // Each twelve bytes are a header that claims the largest frame: the worst case of reading again.
    QByteArray header = Frame(1, QByteArray(int(gnss::kMaxFramePayload), '\0')).left(12);
    QByteArray bytes;
    while (bytes.size() < 2000000) {
        bytes += header;
    }
    Collector got;
    gnss::Codec codec(&got);
    for (int at = 0; at < bytes.size(); at += 997) {
        Feed(codec, bytes.mid(at, 997));
    }
    Feed(codec, QByteArray(int(gnss::kMaxFrameLength), '\n') + Sentence("GPTXT,01,01,02,alive"));
    QCOMPARE(got.whole.size(), 1);
}

QTEST_GUILESS_MAIN(ChunksTest)
#include "ChunksTest.moc"
