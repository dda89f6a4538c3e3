#include "production/FirmwareAnswer.h"
#include "production/FirmwareImage.h"

#include "ImageDescription.h"

#include <QtTest>

#include <algorithm>

namespace {

struct Walk {
    bool header = false;
    std::vector<FirmwareRecord> records;
};

Walk WalkThrough(const std::string& bytes)
{
    std::size_t at = 0;
    FirmwareImage image([&](char* out, std::size_t size) {
        const std::size_t count = std::min(size, bytes.size() - at);
        std::copy_n(bytes.data() + at, count, out);
        at += count;
        return count;
    });
    Walk walk;
    walk.header = image.ReadHeader();
    FirmwareRecord record;
    while (walk.header && image.Next(record)) {
        walk.records.push_back(record);
    }
    return walk;
}

std::string Image(const char* description)
{
    std::string image;
    std::string error;
    if (!MakeImage(description, image, error)) {
        qWarning("%s", error.c_str());
    }
    return image;
}

} // namespace

class TestFirmware : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void RecordsComeInOrderWithTheirKinds()
    {
        const std::string image = Image("header hex 00 FF 0D 0A\n"
                                        "record \"ABC\"\n"
                                        "empty\n"
                                        "record \"QUIT\"\n"
                                        "quit\n"
                                        "quit \"now\"\n"
                                        "record random 65535 3\n"
                                        "# the end\n");
        QCOMPARE(image.size(), std::size_t{4 + 5 + 2 + 6 + 7 + 10 + 65537});
        const Walk walk = WalkThrough(image);
        QCOMPARE(walk.records.size(), std::size_t{6});
        QCOMPARE(walk.records[0].message, std::string("ABC"));
        QVERIFY(!walk.records[0].skipped && walk.records[1].skipped && walk.records[1].message.empty());
        QVERIFY(!walk.records[2].Terminates());
        QVERIFY(walk.records[3].Terminates() && walk.records[3].message.size() == 5);
        QVERIFY(walk.records[4].Terminates());
        QCOMPARE(walk.records[5].message.size(), std::size_t{65535});
    }

    void AnImageCutAnywhereNeverGivesMoreThanItHolds()
    {
        const std::string image = Image("record \"first\"\nempty\nrecord hex 01 02 03 04\nquit\n");
        for (std::size_t size = 0; size <= image.size(); ++size) {
            const Walk walk = WalkThrough(image.substr(0, size));
            QCOMPARE(walk.header, size >= 4);
            std::size_t used = 4;
            for (std::size_t i = 0; i < walk.records.size(); ++i) {
                const FirmwareRecord& record = walk.records[i];
                QVERIFY(record.whole || i + 1 == walk.records.size());
                // A length of which only one byte is left is no empty record.
                QVERIFY(record.whole || !record.skipped);
                QCOMPARE(record.message, image.substr(std::min(used + 2, size), record.message.size()));
                used += std::min<std::size_t>(2, size - used) + record.message.size();
            }
            QVERIFY(size < 4 || used == size);
        }
    }

    void LengthsThatLieTakeWhatIsThere()
    {
        const Walk walk = WalkThrough(Image("length 40000\nrecord \"short\"\nquit\n"));
        QCOMPARE(walk.records.size(), std::size_t{1});
        QVERIFY(!walk.records[0].whole && !walk.records[0].Terminates());
        QCOMPARE(walk.records[0].message, std::string("short\x05\0QUIT ", 12));
        const Walk shorter = WalkThrough(Image("length 1\nrecord \"a\"\nlength 0\nquit\n"));
        QVERIFY(shorter.records[1].skipped);
        QCOMPARE(shorter.records.size(), std::size_t{3}); // "QU" is the third one's length
    }

    void DescriptionsThatMakeNoSenseAreRefused_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("unknown") << QByteArray("recrod \"a\"");
        QTest::newRow("no value") << QByteArray("record");
        QTest::newRow("half a byte") << QByteArray("record hex 0");
        QTest::newRow("no hex") << QByteArray("record hex 0g");
        QTest::newRow("open quote") << QByteArray("record \"a");
        QTest::newRow("too long") << QByteArray("record random 65536 1");
        QTest::newRow("late header") << QByteArray("empty\nheader \"ABCD\"");
        QTest::newRow("long header") << QByteArray("header \"ABCDE\"");
        QTest::newRow("length") << QByteArray("length 65536");
        QTest::newRow("more") << QByteArray("empty 3");
        QTest::newRow("pieces of nothing") << QByteArray("firmware \"1\" 10 0");
        QTest::newRow("huge") << QByteArray("raw random 99999999999 1");
    }

    void DescriptionsThatMakeNoSenseAreRefused()
    {
        QFETCH(QByteArray, text);
        std::string image;
        std::string error;
        QVERIFY(!MakeImage(("# a comment\n" + text).toStdString(), image, error));
        QVERIFY2(error.rfind("line ", 0) == 0, error.c_str());
    }

    void AnswersAreJudgedByEveryByte()
    {
        QVERIFY(!IsAcceptedAnswer(""));
        QVERIFY(IsAcceptedAnswer("C"));
        QVERIFY(IsAcceptedAnswer("CG\x06"));
        QVERIFY(!IsAcceptedAnswer("CGc"));
        QVERIFY(!IsAcceptedAnswer(QByteArray("C\0", 2)));
        QVERIFY(!IsAcceptedAnswer("\x86"));
        QCOMPARE(AnswerAsHex(QByteArray("C\x15\0\xfa", 4)), QStringLiteral("43 15 00 FA"));
    }

    void TheVersionsEnds_data()
    {
        QTest::addColumn<QByteArray>("reply");
        QTest::addColumn<QString>("version");
        const auto row = [](const char* name, const QByteArray& reply, const QString& version) {
            QTest::newRow(name) << reply << version;
        };
        row("a line", "..$GNTXT,V1*4A\r\n", "$GNTXT,V1*4A");
        row("unprintable", "\x06\xE4$GN\x01\x80TXT*4A\r\n", "$GN..TXT*4A");
        row("no star", "$GNTXT,V1\r\n", "$GNTXT,V1.");
        row("checksum at the end", "$V*4A", "$V*4A");
        row("half a checksum", "$V*4", "$V*");
        row("no dollar", "GNTXT,V1*4A\r\n", "");
        row("star before the dollar", "*1$ABCDEF", "$");
        row("star long before", "*123456$ABC\r\n", "");
        row("one byte", "$", "$");
        row("one other byte", "x", "");
        row("two bytes", "$V", "$");
        row("nothing", "", QString(QChar(0)));
        row("longest", "$" + QByteArray(124, 'v') + "*4A", "$" + QString(124, 'v') + "*4A");
    }

    void TheVersionsEnds()
    {
        QFETCH(QByteArray, reply);
        QFETCH(QString, version);
        QCOMPARE(VersionText(reply), version);
    }
};

QTEST_GUILESS_MAIN(TestFirmware)
#include "tst_firmware.moc"
