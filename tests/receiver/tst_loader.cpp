// SPDX-License-Identifier: MIT
#include "ReceiverDriver.h"
#include "protocol/LoaderMessages.h"
#include "receiver/NmeaWriter.h"

using protocol::LoaderMessage;
using protocol::MakeLoaderMessage;

namespace {

const std::string firmware(1000, 'f');
const std::string begin = MakeLoaderMessage(LoaderMessage::Begin, 1000, "NEW 3");
const std::string oldVersion = receiver::VersionSentence("VRX 1.0");

std::string WholeLoad(ReceiverDriver& driver)
{
    std::string answers = driver.Answer(begin);
    answers += driver.Answer(MakeLoaderMessage(LoaderMessage::Data, 0, firmware.substr(0, 600)));
    answers += driver.Answer(MakeLoaderMessage(LoaderMessage::Data, 600, firmware.substr(600)));
    return answers + driver.Answer(MakeLoaderMessage(LoaderMessage::End, protocol::Crc32(firmware)));
}

} // namespace

class TestReceiverLoader : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void ALoadEndsInTheNewVersion()
    {
        for (const int product : {0, protocol::kAtProduct}) {
            receiver::ReceiverOptions options = ReceiverDriver::Options();
            options.product = product;
            ReceiverDriver driver(options);
            driver.Run(5000);
            QVERIFY(driver.receiver.Running());
            QCOMPARE(WholeLoad(driver), std::string("CGC\x06"
                                                    "C\x06"
                                                    "G\x06"));
            QVERIFY(!driver.receiver.Running());
            QCOMPARE(driver.Answer("QUIT ", 100), std::string());
            QCOMPARE(driver.Answer("", 900), receiver::VersionSentence("NEW 3"));
            // It waits for a start, and everything it knew is forgotten.
            QCOMPARE(driver.Answer("", 5000), std::string());
            QVERIFY(!driver.receiver.Engine().Known().timeKnown);
        }
    }

    void MessagesMayComeInPieces()
    {
        ReceiverDriver driver;
        // Other bytes begin no load.
        for (const char* noise : {"V", "VLD", "VVVLDx", "xVLD"}) {
            driver.Answer(noise, 600);
            QCOMPARE(driver.Command(kStart), 0);
        }
        driver.Answer("VV");
        for (std::size_t i = 0; i < begin.size(); ++i) {
            QCOMPARE(driver.Answer(begin.substr(i, 1)), i + 1 < begin.size() ? "" : std::string("CG"));
        }
        QCOMPARE(driver.Answer("QU", 10), std::string());
        QCOMPARE(driver.Answer("IT ", 300), oldVersion);
    }

    void WhatIsWrongIsRefused()
    {
        ReceiverDriver driver;
        std::string broken = begin;
        broken[9] ^= 1;
        for (const std::string& message : {broken, MakeLoaderMessage(LoaderMessage::Data, 0, "early"),
                                           MakeLoaderMessage(LoaderMessage::Begin, 1000, std::string(65, 'v')),
                                           MakeLoaderMessage(LoaderMessage::Begin, 1000, "a*b"), begin,
                                           MakeLoaderMessage(LoaderMessage::Data, 1, "gap"),
                                           MakeLoaderMessage(LoaderMessage::Data, 0, firmware + "more"),
                                           MakeLoaderMessage(LoaderMessage::End, protocol::Crc32(firmware)),
                                           MakeLoaderMessage(static_cast<LoaderMessage>(9), 0),
                                           std::string("noise"), std::string("VLDR\x01\0\x02\0ab1234", 14)}) {
            QCOMPARE(driver.Answer(message), message == begin ? "CG" : std::string(protocol::kAnswerRefused));
        }
        // What was not loaded whole and right is not booted; from the first record
        // again it goes.
        QCOMPARE(driver.Answer("QUIT now", 300), oldVersion);
        QCOMPARE(WholeLoad(driver).size(), std::size_t{8});
        // Without a word it boots the old firmware.
        ReceiverDriver silent;
        silent.Answer(begin);
        QCOMPARE(silent.Answer("", 9000), std::string());
        QCOMPARE(silent.Answer("", 1100), oldVersion);
        QCOMPARE(silent.Command(kStart), 0);
    }
};

QTEST_GUILESS_MAIN(TestReceiverLoader)
#include "tst_loader.moc"
