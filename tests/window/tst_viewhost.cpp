// SPDX-License-Identifier: MIT
#include "Files.h"
#include "FixCountViewWin.h"

#include "protocol/Records.h"
#include "views/log/HexViewWin.h"
#include "window/ViewEntryOf.h"

#include <QLabel>
#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPlainTextEdit>
#include <QRegularExpression>

namespace {

/// A view that sends.
class SendingView : public ClosingWidget {
    Q_OBJECT

public:
    using ClosingWidget::ClosingWidget;
    void OnFirst(const void*, int length) { taken.append(length); }
    void OnSecond(const void*, int length) { taken.append(-length); }
    QList<int> taken;

signals:
    void SendMsg(uint8_t* buffer, int length);
    void SendWakeUpCmd();
};

constexpr ViewEntry kEntries[] = {
    ShowsRecord<FixCountViewWin, protocol::CB_DATA>("定位次数视图", "Data.png"),
    {"发送",
     "Data.png",
     MakeView<SendingView>,
     {Record<protocol::CB_ACK, &SendingView::OnFirst>(), Record<protocol::CB_CN0, &SendingView::OnSecond>()}},
    WithoutRecord<HexViewWin>("字节", "HexView.png"),
};
constexpr ViewEntries kTable = {kEntries, 3};

protocol::FixRecord Fix(std::uint8_t mode)
{
    protocol::FixRecord fix = {};
    fix.hour = 12;
    fix.minute = 34;
    fix.fixMode = mode;
    return fix;
}

} // namespace

class TestWindowViewHost : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_window = std::make_unique<QMainWindow>();
        m_host = std::make_unique<ViewHost>(m_window.get(), kTable);
        m_host->InstallArea();
    }
    void cleanup()
    {
        m_host.reset();
        m_window.reset();
    }

    void ARowOpensAViewThatGetsItsRecordUntilItCloses()
    {
        const auto deliver = [this](std::uint8_t mode) {
            const protocol::FixRecord fix = Fix(mode);
            m_host->Deliver(protocol::CB_DATA, &fix, sizeof(fix));
            m_host->Deliver(protocol::CB_KPI_POSITION, &fix, sizeof(fix));
        };
        deliver(protocol::FixAutonomous);
        QVERIFY(m_host->Open("定位次数视图"));
        auto* view = m_host->Find<FixCountViewWin>();
        QVERIFY(view != nullptr && view->parentWidget() == m_host->Area()->subWindowList().value(0));
        deliver(protocol::FixAutonomous);
        deliver(protocol::FixInvalid);
        deliver(protocol::FixAutonomous);
        m_host->Deliver(protocol::CB_DATA, "cut", 3);
        QCOMPARE(view->findChild<QLabel*>()->text(), QStringLiteral("2 (12:34)"));

        QVERIFY(m_host->Open("定位次数视图"));
        QCOMPARE(m_host->Area()->subWindowList().size(), 1);
        m_host->Area()->subWindowList().first()->close();
        QVERIFY(m_host->Find<FixCountViewWin>() == nullptr);
        deliver(protocol::FixAutonomous);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(m_host->Open("定位次数视图"));
        QVERIFY(m_host->Find<FixCountViewWin>() != nullptr);
        QVERIFY(!m_host->Open("定位"));
        QVERIFY(!m_host->Open(QString()));
    }

    void WhatAViewSendsAndTakesIsJoined()
    {
        QByteArray sent;
        int wakeUps = 0;
        connect(m_host.get(), &ViewHost::SendMsg, this, [&sent](uint8_t* buffer, int length) {
            sent.append(reinterpret_cast<const char*>(buffer), length);
        });
        connect(m_host.get(), &ViewHost::SendWakeUpCmd, this, [&wakeUps] { ++wakeUps; });
        m_host->Open("发送");
        auto* view = m_host->Find<SendingView>();
        uint8_t bytes[] = {'a', 'b'};
        emit view->SendMsg(bytes, 2);
        emit view->SendWakeUpCmd();
        QVERIFY(sent == "ab" && wakeUps == 1);
        m_host->Deliver(protocol::CB_ACK, bytes, 1);
        m_host->Deliver(protocol::CB_CN0, bytes, 2);
        m_host->Deliver(protocol::CB_NMEA, bytes, 2);
        QCOMPARE(view->taken, (QList<int>{1, -2}));

        m_host->Open("字节");
        emit m_host->BytesReceived("\x01\x02");
        QVERIFY(!m_host->Find<HexViewWin>()->findChild<QPlainTextEdit*>()->toPlainText().isEmpty());
        // A view that someone else wishes to end gets nothing more, though it stays.
        m_host->Forget("SendingView");
        QVERIFY(m_host->Find<SendingView>() == nullptr);
        m_host->Deliver(protocol::CB_ACK, bytes, 1);
        QCOMPARE(view->taken.size(), 2);
    }

    /// What CONTRIBUTING.md shows of a file stands in that file.
    void TheWalksOfTheContributorsAreTrue()
    {
        const QString text = QString::fromUtf8(Content(QStringLiteral(GNSS_SOURCE_DIR "/CONTRIBUTING.md")));
        static const QRegularExpression shown("^`([^`\n]+)`:\n\n```[a-z]*\n(.*?)```$",
                                              QRegularExpression::MultilineOption |
                                                  QRegularExpression::DotMatchesEverythingOption);
        int blocks = 0;
        for (auto found = shown.globalMatch(text); found.hasNext(); ++blocks) {
            const QRegularExpressionMatch match = found.next();
            const QString file = match.captured(1);
            const QString content = QString::fromUtf8(Content(QStringLiteral(GNSS_SOURCE_DIR "/") + file));
            QVERIFY2(content.contains(match.captured(2)),
                     qPrintable("not in " + file + ":\n" + match.captured(2)));
        }
        QVERIFY2(blocks >= 8, qPrintable(QString::number(blocks)));
        QCOMPARE(text.count("```") / 2, blocks);
    }

private:
    std::unique_ptr<QMainWindow> m_window;
    std::unique_ptr<ViewHost> m_host;
};

QTEST_MAIN(TestWindowViewHost)

#include "tst_viewhost.moc"
