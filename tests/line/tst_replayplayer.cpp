// SPDX-License-Identifier: MIT
#include "FakeCodec.h"
#include "Files.h"

#include "base/ProcessState.h"
#include "bridge/ClassGnss.h"
#include "line/ReplayPlayer.h"

#include <QTimer>

namespace {

int Decoded()
{
    return FakeCodec::Calls().filter("GnssDecode").size();
}

} // namespace

class TestLineReplayPlayer : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        Global::ResetForNewWindow();
        FakeCodec::Install();
        ClassGnss::InitGnssUtils();
        m_told.clear();
        m_player = std::make_unique<ReplayPlayer>();
        connect(m_player.get(), &ReplayPlayer::Started, this, [this] { m_told.append("started"); });
        connect(m_player.get(), &ReplayPlayer::Ended, this, [this] { m_told.append("ended"); });
        connect(m_player.get(), &ReplayPlayer::PauseChanged, this,
                [this](bool paused) { m_told.append(paused ? "paused" : "on"); });
        connect(m_player.get(), &ReplayPlayer::Progressed, this,
                [this](int percent) { m_told.append(QString::number(percent)); });
        WriteFile("four.bin", QByteArray("$GPGGA,1*00\r\n").repeated(5));
    }
    void cleanup()
    {
        m_player.reset();
        ClassGnss::UnloadCodec();
        FakeCodec::Remove();
    }

    void AFileThatHoldsNothingIsNamed()
    {
        WriteFile("empty.bin", "no sentence at all");
        QVERIFY(m_player->Play("none.bin") == ReplayPlayer::Opening::CannotOpen);
        QVERIFY(m_player->Play("empty.bin") == ReplayPlayer::Opening::NoCapture);
        QVERIFY(!Global::replayRunning && m_told.isEmpty());
    }

    void EachChunkGoesOnceAndTheTickBehindTheLastEnds()
    {
        QVERIFY(m_player->Play("four.bin") == ReplayPlayer::Opening::Playing);
        QVERIFY(Global::replayRunning);
        for (int i = 0; i < 5; ++i) {
            m_player->Tick();
        }
        QCOMPARE(Decoded(), 4);
        QCOMPARE(m_told, (QStringList{"started", "0", "25", "50", "75", "ended"}));
        QVERIFY(!Global::replayRunning);
    }

    void SeekingHoldingAndPausing()
    {
        m_player->Play("four.bin");
        auto* timer = m_player->findChild<QTimer*>();
        QCOMPARE(timer->interval(), 1000);
        m_player->SetSpeed(4.0F);
        QCOMPARE(timer->interval(), 250);
        m_player->TogglePause();
        m_player->SetSpeed(2.0F);
        QVERIFY(!timer->isActive());
        m_player->TogglePause();
        QVERIFY(timer->isActive() && timer->interval() == 500);
        m_player->HoldProgress(true);
        m_player->Seek(75);
        m_player->Tick();
        m_player->Seek(100);
        m_player->Tick();
        QCOMPARE(Decoded(), 1);
        QCOMPARE(m_told, (QStringList{"started", "paused", "on", "ended"}));
        // A new replay begins at its beginning.
        m_player->HoldProgress(false);
        m_player->Play("four.bin");
        m_player->Tick();
        QCOMPARE(m_told.last(), QStringLiteral("0"));
    }

private:
    std::unique_ptr<ReplayPlayer> m_player;
    QStringList m_told;
};

QTEST_GUILESS_MAIN(TestLineReplayPlayer)

#include "tst_replayplayer.moc"
