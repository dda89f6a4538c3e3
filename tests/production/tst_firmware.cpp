// SPDX-License-Identifier: MIT
#include "production/FirmwareAnswer.h"
#include "protocol/FirmwareImage.h"

#include "tools/firmware/ImageDescription.h"

#include <QtTest>

#include <algorithm>

namespace {

struct Walk {
    bool header = false;
    std::vector<protocol::FirmwareRecord> records;
};

Walk WalkThrough(const std::string& bytes)
{
    std::size_t at = 0;
    protocol::FirmwareImage image([&](char* out, std::size_t size) {
        const std::size_t count = std::min(size, bytes.size() - at);
        std::copy_n(bytes.data() + at, count, out);
        at += count;
        return count;
    });
    Walk walk;
    walk.header = image.ReadHeader();
    protocol::FirmwareRecord record;
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
        const std::string image = Image("header hex 00 FF 0D 0A\nrecord \"ABC\"\nempty\nrecord \"QUIT\"\n"
                                        "quit\nquit \"now\"\nrecord random 65535 3\n# the end\n");
        QCOMPARE(image.size(), std::size_t{4 + 5 + 2 + 6 + 7 + 10 + 65537});
        const std::vector<protocol::FirmwareRecord> records = WalkThrough(image).records;
        QCOMPARE(records.size(), std::size_t{6});
        QCOMPARE(records[0].message, std::string("ABC"));
        QVERIFY(!records[0].skipped && records[1].skipped && records[1].message.empty());
        QVERIFY(!records[2].Terminates() && records[3].Terminates() && records[4].Terminates());
        QCOMPARE(records[5].message.size(), std::size_t{65535});
    }

    void AnImageCutAnywhereNeverGivesMoreThanItHolds()
    {
        const std::string image = Image("record \"first\"\nempty\nrecord hex 01 02 03 04\nquit\n");
        for (std::size_t size = 0; size <= image.size(); ++size) {
            const Walk walk = WalkThrough(image.substr(0, size));
            QCOMPARE(walk.header, size >= 4);
            std::size_t used = 4;
            for (std::size_t i = 0; i < walk.records.size(); ++i) {
                const protocol::FirmwareRecord& record = walk.records[i];
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
    }

    void DescriptionsThatMakeNoSenseAreRefused()
    {
        for (const char* text : {"recrod \"a\"", "record", "record hex 0g", "record \"a", "record random 65536 1",
                                 "empty\nheader \"ABCD\"", "header \"ABCDE\"", "length 65536", "empty 3",
                                 "firmware \"1\" 10 0", "raw random 99999999999 1"}) {
            std::string image;
            std::string error;
            QVERIFY2(!MakeImage(std::string("# a comment\n") + text, image, error), text);
            QVERIFY2(error.rfind("line ", 0) == 0, error.c_str());
        }
    }

    void AnswersAreJudgedByEveryByte()
    {
        QVERIFY(IsAcceptedAnswer("C") && IsAcceptedAnswer("CG\x06"));
        for (const QByteArray& wrong :
             {QByteArray(), QByteArray("CGc"), QByteArray("C\0", 2), QByteArray("\x86")}) {
            QVERIFY2(!IsAcceptedAnswer(wrong), wrong.toHex().constData());
        }
        QCOMPARE(AnswerAsHex(QByteArray("C\x15\0\xfa", 4)), QStringLiteral("43 15 00 FA"));
    }

    void TheVersionsEnds()
    {
        const auto check = [](const QByteArray& reply, const QString& version) {
            QVERIFY2(VersionText(reply) == version, reply.constData());
        };
        check("..$GNTXT,V1*4A\r\n", "$GNTXT,V1*4A");
        check("\x06\xE4$GN\x01\x80TXT*4A\r\n", "$GN..TXT*4A");
        check("$GNTXT,V1\r\n", "$GNTXT,V1."); // without a '*' it ends two before the end
        check("$V*4A", "$V*4A");
        check("$V*4", "$V*");
        check("GNTXT,V1*4A\r\n", "");
        check("*1$ABCDEF", "$");
        check("*123456$ABC\r\n", ""); // the end lies before the beginning
        check("$", "$");
        check("x", "");
        check("", QString(QChar(0)));
        check("$" + QByteArray(124, 'v') + "*4A", "$" + QString(124, 'v') + "*4A");
    }
};

QTEST_GUILESS_MAIN(TestFirmware)
#include "tst_firmware.moc"
