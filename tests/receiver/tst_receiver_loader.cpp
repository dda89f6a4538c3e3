#include "ReceiverDriver.h"
#include "receiver/LoaderMessages.h"
#include "receiver/NmeaWriter.h"

using vrx::LoaderMessage;
using vrx::MakeLoaderMessage;

namespace {

const std::string firmware(1000, 'f');

vrx::ReceiverOptions With(const char* fault = nullptr)
{
    vrx::ReceiverOptions options = ReceiverDriver::Options();
    std::string error;
    if (fault != nullptr && !options.faults.Add(fault, error)) {
        qFatal("%s", error.c_str());
    }
    return options;
}

std::string Begin(const std::string& version = "NEW 3")
{
    return MakeLoaderMessage(LoaderMessage::Begin, 1000, version);
}

/// What comes in answer, at once and within `millis`.
std::string Answer(ReceiverDriver& driver, const std::string& message, vrx::Millis millis = 0)
{
    driver.messages.clear();
    driver.SendBytes(message);
    driver.Run(millis);
    std::string all;
    for (const std::string& piece : driver.messages) {
        all += piece;
    }
    return all;
}

std::string WholeLoad(ReceiverDriver& driver)
{
    std::string answers = Answer(driver, Begin());
    answers += Answer(driver, MakeLoaderMessage(LoaderMessage::Data, 0, firmware.substr(0, 600)));
    answers += Answer(driver, MakeLoaderMessage(LoaderMessage::Data, 600, firmware.substr(600)));
    return answers + Answer(driver, MakeLoaderMessage(LoaderMessage::End, vrx::Crc32(firmware)));
}

} // namespace

class TestReceiverLoader : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void ALoadEndsInTheNewVersion()
    {
        ReceiverDriver driver;
        driver.Run(5000);
        QVERIFY(driver.receiver.Running());
        QCOMPARE(WholeLoad(driver), std::string("CG"
                                                "C\x06"
                                                "C\x06"
                                                "G\x06"));
        QVERIFY(!driver.receiver.Running());
        QCOMPARE(Answer(driver, "QUIT ", 100), std::string());
        QCOMPARE(Answer(driver, "", 900), vrx::VersionSentence("NEW 3"));
        // It waits for a start, and everything it knew is forgotten.
        driver.messages.clear();
        driver.Run(5000);
        QVERIFY(driver.messages.empty());
        QVERIFY(!driver.receiver.Engine().Known().timeKnown);
    }

    void MessagesMayComeInPieces()
    {
        ReceiverDriver driver;
        const std::string begin = Begin();
        for (const char c : begin.substr(0, begin.size() - 1)) {
            driver.messages.clear();
            driver.SendBytes(std::string(1, c));
            QVERIFY(driver.messages.empty());
        }
        QCOMPARE(Answer(driver, begin.substr(begin.size() - 1)), std::string("CG"));
        QCOMPARE(Answer(driver, "QU", 10), std::string());
        QCOMPARE(Answer(driver, "IT ", 300), vrx::VersionSentence("VRX 1.0"));
    }

    void WhatIsWrongIsRefused()
    {
        const std::string refused(vrx::kAnswerRefused);
        ReceiverDriver driver;
        std::string broken = Begin();
        broken[9] ^= 1;
        QCOMPARE(Answer(driver, broken), refused);
        QCOMPARE(Answer(driver, MakeLoaderMessage(LoaderMessage::Data, 0, "early")), refused);
        QCOMPARE(Answer(driver, Begin(std::string(65, 'v'))), refused);
        QCOMPARE(Answer(driver, Begin("a*b")), refused);
        QCOMPARE(Answer(driver, Begin()), std::string("CG"));
        QCOMPARE(Answer(driver, MakeLoaderMessage(LoaderMessage::Data, 1, "gap")), refused);
        QCOMPARE(Answer(driver, MakeLoaderMessage(LoaderMessage::Data, 0, firmware + "more")), refused);
        QCOMPARE(Answer(driver, MakeLoaderMessage(LoaderMessage::End, vrx::Crc32(firmware))), refused);
        QCOMPARE(Answer(driver, MakeLoaderMessage(static_cast<LoaderMessage>(9), 0)), refused);
        QCOMPARE(Answer(driver, std::string("noise")), refused);
        QCOMPARE(Answer(driver, std::string("VLDR\x01\0\x02\0ab1234", 14)), refused);
        // What was not loaded whole and right is not booted.
        QCOMPARE(Answer(driver, "QUIT now", 300), vrx::VersionSentence("VRX 1.0"));
        // From the first record again it goes.
        QCOMPARE(WholeLoad(driver).size(), std::size_t{8});
    }

    void WithoutAWordItBootsTheOldFirmware()
    {
        ReceiverDriver driver;
        Answer(driver, Begin());
        QCOMPARE(Answer(driver, "", 9000), std::string());
        QCOMPARE(Answer(driver, "", 1100), vrx::VersionSentence("VRX 1.0"));
        QCOMPARE(driver.Command(ReceiverDriver::Frame(gnss::CmdStart, std::string(12, '\0'), gnss::kStartWord)),
                 0);
    }

    void FaultsSpoilTheAnswers()
    {
        ReceiverDriver wrong(With("loader-wrong=2"));
        QCOMPARE(WholeLoad(wrong), std::string("CG"
                                               "C\x15"
                                               "C\x06"
                                               "G\x06"));
        ReceiverDriver mute(With("loader-mute=3"));
        QCOMPARE(WholeLoad(mute), std::string("CGC\x06"));
        ReceiverDriver late(With("loader-late=300"));
        QCOMPARE(Answer(late, Begin(), 299), std::string());
        QCOMPARE(Answer(late, "", 1), std::string("CG"));
        ReceiverDriver split(With("loader-split=50"));
        QCOMPARE(Answer(split, Begin(), 49), std::string("C"));
        QCOMPARE(Answer(split, "", 1), std::string("G"));
    }

    void TheFirmwareAlsoLoadsOverAtReceivers()
    {
        vrx::ReceiverOptions options = ReceiverDriver::Options();
        options.product = gnss::kAtProduct;
        ReceiverDriver driver(options);
        QCOMPARE(WholeLoad(driver).size(), std::size_t{8});
    }

    void OtherBytesBeginNoLoad()
    {
        ReceiverDriver driver;
        driver.Run(1000);
        for (const char* noise : {"V", "VLD", "VVVLDx", "xVLD"}) {
            driver.SendBytes(noise);
            driver.Run(600);
            QCOMPARE(
                driver.Command(ReceiverDriver::Frame(gnss::CmdStart, std::string(12, '\0'), gnss::kStartWord)), 0);
        }
        QVERIFY(driver.receiver.Running());
        // The loader's beginning behind noise is found.
        QCOMPARE(Answer(driver, "VV" + Begin()), std::string("CG"));
    }
};

QTEST_GUILESS_MAIN(TestReceiverLoader)
#include "tst_receiver_loader.moc"
