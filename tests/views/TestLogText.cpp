#include "views/HexDump.h"
#include "views/LogHistory.h"
#include "views/RecordCopy.h"

#include <QTest>

class TestLogText : public QObject {
    Q_OBJECT

private slots:
    void DumpsABlock_data();
    void DumpsABlock();
    void FindsLogsByTheirTime();
    void CopiesNoMoreThanARecord();
};

void TestLogText::DumpsABlock_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("columns");
    QTest::addColumn<QString>("prefix");
    QTest::addColumn<QString>("dump");
    QTest::newRow("two full lines and the rest") << QByteArray("0123456789") << 4 << ""
                                                 << "30 31 32 33 | 0123\n34 35 36 37 | 4567\n38 39       | 89";
    QTest::newRow("full lines only") << QByteArray("01234567") << 4 << ""
                                     << "30 31 32 33 | 0123\n34 35 36 37 | 4567";
    QTest::newRow("less than a line") << QByteArray("$G\r\n") << 8 << ""
                                      << "24 47 0d 0a             | $G..";
    QTest::newRow("bounds of what is shown") << QByteArray("\x00\x20\x21\x7e\x7f\x80\xff\x1f", 8) << 8 << ""
                                             << "00 20 21 7e 7f 80 ff 1f | ..!~....";
    QTest::newRow("time on every line") << QByteArray("abcde") << 4 << "[10:11:12] "
                                        << "[10:11:12] 61 62 63 64 | abcd\n[10:11:12] 65          | e";
    QTest::newRow("32 columns") << QByteArray(33, 'A') << 32 << ""
                                << QString("41 ").repeated(32) + "| " + QString(32, 'A') + "\n41" +
                                       QString(32 * 3 - 3, ' ') + " | A";
    QTest::newRow("nothing") << QByteArray() << 16 << "[10:11:12] "
                             << "";
    QTest::newRow("no columns") << QByteArray("a") << 0 << ""
                                << "";
}

void TestLogText::DumpsABlock()
{
    QFETCH(QByteArray, bytes);
    QFETCH(int, columns);
    QFETCH(QString, prefix);
    QTEST(HexDump(bytes, columns, prefix), "dump");
}

void TestLogText::FindsLogsByTheirTime()
{
    const QStringList names{"log_20260105101530.txt", "log_20260105101531.txt", "notes.txt",
                            "log_2026010510153.txt",  "log_20261305101530.txt", "abcd20260105101530",
                            "log_20251231235959.txt"};
    QVERIFY(!LogStamp("log_2026010510153").isValid());
    QVERIFY(!LogStamp("").isValid());
    const QVector<QDateTime> stamps = LogStamps(names);
    QCOMPARE(stamps.size(), 4);
    QCOMPARE(LogFileOf(names, stamps[0]), QString("log_20260105101531.txt"));
    // Of two files with one time the first is found.
    QCOMPARE(LogFileOf(names, stamps[1]), QString("log_20260105101530.txt"));
    QCOMPARE(stamps[1], stamps[2]);
    QCOMPARE(LogFileOf(names, stamps[3]), QString("log_20251231235959.txt"));
    QCOMPARE(LogFileOf(names, stamps[3].addSecs(1)), QString());
}

void TestLogText::CopiesNoMoreThanARecord()
{
    const QByteArray bytes = QByteArray::fromHex("0102030405");
    QVERIFY(RecordCopy(nullptr, 5, 10, "V").IsDropped());
    QVERIFY(RecordCopy(bytes.constData(), 0, 10, "V").IsDropped());
    QVERIFY(RecordCopy(bytes.constData(), -1, 10, "V").IsDropped());

    const RecordCopy cut(bytes.constData(), 2000000000, 5, "V");
    QCOMPARE(cut.Size(), std::size_t(5));
    QCOMPARE(cut.At<quint32>(1), 0x05040302U);
    QCOMPARE(cut.At<quint32>(2), 0U);
    QCOMPARE(cut.At<quint8>(static_cast<std::size_t>(-1)), quint8(0));
    QCOMPARE(cut.HeldEntries(255, 1, 2), std::size_t(2));
    QCOMPARE(cut.HeldEntries(1, 1, 2), std::size_t(1));
    QCOMPARE(cut.HeldEntries(255, 5, 1), std::size_t(0));
    QCOMPARE(cut.HeldEntries(255, 6, 1), std::size_t(0));
}

QTEST_GUILESS_MAIN(TestLogText)
#include "TestLogText.moc"
