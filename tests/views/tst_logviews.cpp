// SPDX-License-Identifier: MIT
#include "LogFolder.h"
#include "base/GnssSaveData.h"
#include "base/ProcessState.h"
#include "base/StatusLog.h"
#include "bridge/RecordCopy.h"
#include "protocol/Records.h"
#include "views/log/HexDump.h"
#include "views/log/HexViewWin.h"
#include "views/log/NMEAViewWin.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QTextEdit>
#include <QToolButton>
#include <QWheelEvent>

#include <cstring>
#include <memory>

namespace {

protocol::NmeaText Record(const QList<QByteArray>& sentences)
{
    protocol::NmeaText record{};
    record.count = static_cast<std::uint8_t>(sentences.size());
    for (int i = 0; i < sentences.size(); ++i) {
        std::memcpy(record.slot[i], sentences[i].constData(), static_cast<std::size_t>(sentences[i].size()));
    }
    return record;
}

void Send(NMEAViewWin& view, const QList<QByteArray>& sentences)
{
    const protocol::NmeaText record = Record(sentences);
    view.OnRecord(&record, sizeof(record));
}

QPlainTextEdit* TextEdit(const QWidget& view)
{
    return view.findChild<QPlainTextEdit*>("textEdit");
}

QString Text(const QWidget& view)
{
    return TextEdit(view)->toPlainText();
}

QToolButton* Button(const QWidget& view, const char* name)
{
    return view.findChild<QToolButton*>(name);
}

void TurnWheel(const QWidget& view, int angle)
{
    QWidget* viewport = TextEdit(view)->viewport();
    QWheelEvent event(QPointF(5, 5), viewport->mapToGlobal(QPoint(5, 5)), QPoint(), QPoint(0, angle), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(viewport, &event);
}

} // namespace

class TestLogViews : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void DumpsABlock();
    void CopiesNoMoreThanARecord();
    void ShowsAndLogsSentences();
    void TakesRecordsThatLie();
    void FilterCutsTheTextAndTheLog();
    void TimeStandsBeforeTheTextOnly();
    void RolledLogAndTextStartTogether();
    void ShowsAndLogsBytes();
    void PagesBackNewestFirst();
    void PagingSaysWhyItEnds();
    void WheelPagesOnlyAtTheTop();

private:
    QByteArray Log(const QString& name) const
    {
        const QStringList files = m_folder->Files("GnssData/logs/" + name);
        return files.isEmpty() ? QByteArray("no log")
                               : LogFolder::WithoutTimes(LogFolder::Content(
                                     m_folder->Path("GnssData/logs/" + name + "/" + files.last())));
    }

    std::unique_ptr<LogFolder> m_folder;
    std::unique_ptr<QTextEdit> m_status;
};

void TestLogViews::init()
{
    m_folder = std::make_unique<LogFolder>();
    m_status = std::make_unique<QTextEdit>();
    SetStatusEdit(m_status.get());
    Global::showTimestamp = false;
}

void TestLogViews::cleanup()
{
    SetStatusEdit(nullptr);
    m_status.reset();
    m_folder.reset();
}

void TestLogViews::DumpsABlock()
{
    QCOMPARE(HexDump("0123456789", 4, ""), QString("30 31 32 33 | 0123\n34 35 36 37 | 4567\n38 39       | 89"));
    QCOMPARE(HexDump("01234567", 4, ""), QString("30 31 32 33 | 0123\n34 35 36 37 | 4567"));
    QCOMPARE(HexDump(QByteArray("\x00\x20\x21\x7e\x7f\x80\xff", 7), 8, ""),
             QString("00 20 21 7e 7f 80 ff    | ..!~..."));
    QCOMPARE(HexDump("abcde", 4, "[10:11:12] "),
             QString("[10:11:12] 61 62 63 64 | abcd\n[10:11:12] 65          | e"));
    QCOMPARE(HexDump("", 16, "[10:11:12] "), QString());
}

void TestLogViews::CopiesNoMoreThanARecord()
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

void TestLogViews::ShowsAndLogsSentences()
{
    NMEAViewWin view(nullptr);
    QCOMPARE(view.windowTitle(), QString("NMEA"));
    // A slot that is full has no NUL.
    const QByteArray full(protocol::kNmeaSlotSize, 'F');
    Send(view, {"$GPGGA,1*00\r\n", "", "\r\nhidden", "$GPRMC,2*00\n", "$GPGSA,3*00\r\r\n", full, "$GPTXT,4*00"});
    QCOMPARE(Text(view), "$GPGGA,1*00\n$GPRMC,2*00\n$GPGSA,3*00\n" + QString(full) + "\n$GPTXT,4*00");
    QCOMPARE(Log("nmea"), "$GPGGA,1*00\r\n\n$GPRMC,2*00\n\n$GPGSA,3*00\r\r\n\n" + full + "\n$GPTXT,4*00\n");

    Send(view, {"$GPGLL,5*00\r\n"});
    QVERIFY(Text(view).endsWith("\n$GPTXT,4*00\n$GPGLL,5*00"));
    QVERIFY(TextEdit(view)->isReadOnly());
    QVERIFY(!TextEdit(view)->document()->isUndoAvailable());

    Button(view, "clearBtn")->click();
    QCOMPARE(Text(view), QString());
    Send(view, {"$GPGLL,6*00\r\n"});
    QCOMPARE(Text(view), QString("$GPGLL,6*00"));
}

void TestLogViews::TakesRecordsThatLie()
{
    NMEAViewWin view(nullptr);
    QList<QByteArray> sentences;
    for (int i = 0; i < static_cast<int>(protocol::kNmeaSlots); ++i) {
        sentences.append("$S" + QByteArray::number(i) + "\r\n");
    }
    protocol::NmeaText record = Record(sentences);
    view.OnRecord(&record, sizeof(record) - 1);
    QCOMPARE(Text(view), QString());
    record.count = 255;
    view.OnRecord(&record, 1000000);
    QCOMPARE(Text(view).split('\n').size(), int(protocol::kNmeaSlots));
    QVERIFY(Text(view).endsWith("$S31"));
}

void TestLogViews::FilterCutsTheTextAndTheLog()
{
    NMEAViewWin view(nullptr);
    auto* edit = view.findChild<QLineEdit*>("filterEdit");
    QToolButton* button = Button(view, "filterBtn");
    edit->setText("gga");
    Send(view, {"$GPRMC,1\r\n"});
    button->click();
    QVERIFY(edit->isEnabled() && button->isChecked());
    Send(view, {"$GPRMC,2\r\n", "$GPGGA,2\r\n"});
    edit->clear();
    Send(view, {"$GPRMC,3\r\n"});
    edit->setText("nothing like it");
    Send(view, {"$GPRMC,4\r\n"});
    button->click();
    QVERIFY(!edit->isEnabled() && !button->isChecked() && !edit->text().isEmpty());
    Send(view, {"$GPRMC,5\r\n"});
    QCOMPARE(Text(view), QString("$GPRMC,1\n$GPGGA,2\n$GPRMC,3\n$GPRMC,5"));
    QCOMPARE(Log("nmea"), QByteArray("$GPRMC,1\r\n\n$GPGGA,2\r\n\n$GPRMC,3\r\n\n$GPRMC,5\r\n\n"));
}

void TestLogViews::TimeStandsBeforeTheTextOnly()
{
    NMEAViewWin nmea(nullptr);
    HexViewWin hex(nullptr);
    Send(nmea, {"$A\r\n"});
    Button(nmea, "timeBtn")->click();
    Button(hex, "timeBtn")->click();
    Send(nmea, {"$B\r\n", "$C\r\n"});
    hex.OnBytes(QByteArray(17, 'x'));
    Button(nmea, "timeBtn")->click();
    Send(nmea, {"$D\r\n"});
    const QString time = "\\[[0-9]{2}:[0-9]{2}:[0-9]{2}\\] ";
    QVERIFY(QRegularExpression("^\\$A\n" + time + "\\$B\n" + time + "\\$C\n\\$D$").match(Text(nmea)).hasMatch());
    QVERIFY(QRegularExpression("^" + time + "78 [^\n]*\n" + time + "78 [^\n]*$").match(Text(hex)).hasMatch());
    QCOMPARE(Log("nmea"), QByteArray("$A\r\n\n$B\r\n\n$C\r\n\n$D\r\n\n"));
}

void TestLogViews::RolledLogAndTextStartTogether()
{
    NMEAViewWin view(nullptr);
    auto* log = view.findChild<GnssSaveData*>();
    const QByteArray block(static_cast<int>(kLogRollSize) - 30, 'x');
    log->Write(block.constData(), static_cast<quint32>(block.size()));
    // The second sentence brings the log above its limit.
    Send(view, {"$1\r\n", "$22222222222\r\n", "$3\r\n", "$4\r\n"});
    QCOMPARE(Text(view), QString("$3\n$4"));
    QCOMPARE(Log("nmea"), QByteArray("$3\r\n\n$4\r\n\n"));
}

void TestLogViews::ShowsAndLogsBytes()
{
    HexViewWin view(nullptr);
    QCOMPARE(view.windowTitle(), QString::fromUtf8("十六进制"));
    auto* columns = view.findChild<QComboBox*>("columns");
    QCOMPARE(columns->currentText(), QString("16"));
    view.OnBytes(QByteArray());
    const QByteArray block("01234567\0\xff", 10);
    view.OnBytes(block);
    columns->setCurrentText("4");
    view.OnBytes(block);
    QCOMPARE(Text(view), QString("30 31 32 33 34 35 36 37 00 ff                   | 01234567..\n"
                                 "30 31 32 33 | 0123\n34 35 36 37 | 4567\n00 ff       | .."));
    QCOMPARE(Log("hex"), block + '\n' + block + '\n');
}

void TestLogViews::PagesBackNewestFirst()
{
    QVERIFY(m_folder->Put("GnssData/logs/hex/log_20260105101530.txt", "older\r\n"));
    QVERIFY(m_folder->Put("GnssData/logs/hex/log_20260105101531.txt", QByteArray("new\0er\xe9\nend\n", 12)));
    for (const char* name : {"a name.txt", "log_2026010510153.txt", "log_20261305101530.txt"}) {
        QVERIFY(m_folder->Put(QString("GnssData/logs/hex/") + name, "not a log"));
    }
    HexViewWin view(nullptr);
    view.OnBytes("now");
    const QString shown = Text(view);
    view.ProcScrolledPastTop();
    const QString newer = QString("new") + QChar(0) + "er" + QChar(0xe9) + "\nend\n";
    QCOMPARE(Text(view), newer + shown);
    view.ProcScrolledPastTop();
    QCOMPARE(Text(view), "older\n" + newer + shown);
    QVERIFY(m_status->toPlainText().isEmpty());
    view.ProcScrolledPastTop();
    QCOMPARE(Text(view), "older\n" + newer + shown);
    QCOMPARE(m_status->toPlainText(), QString::fromUtf8("已是当前测试所有内容！"));

    Button(view, "clearBtn")->click();
    view.ProcScrolledPastTop();
    QCOMPARE(Text(view), newer);
    view.ResetHistory();
    view.ProcScrolledPastTop();
    QCOMPARE(Text(view), newer + newer);
}

void TestLogViews::PagingSaysWhyItEnds()
{
    NMEAViewWin view(nullptr);
    const auto why = [&] {
        m_status->clear();
        view.ProcScrolledPastTop();
        return m_status->toPlainText();
    };
    // Nothing but the log that is being written.
    QCOMPARE(why(), QString("已是当前测试所有内容！"));
    const LogFolder elsewhere;
    QCOMPARE(why(), QString("无可用文件，请检查log文件是否存在！"));
    QVERIFY(elsewhere.Put("GnssData/logs/nmea/notes.txt", "not a log"));
    QCOMPARE(why(), QString("无可用文件，请检查log文件是否存在！"));
    QCOMPARE(Text(view), QString());
}

void TestLogViews::WheelPagesOnlyAtTheTop()
{
    QVERIFY(m_folder->Put("GnssData/logs/nmea/log_20260105101530.txt", QByteArray("$OLD\n").repeated(50)));
    NMEAViewWin view(nullptr);
    view.resize(400, 300);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    for (int i = 0; i < 100; ++i) {
        Send(view, {"$NEW\r\n"});
    }
    // Lines that are seen come in steps.
    QTRY_COMPARE(TextEdit(view)->blockCount(), 100);
    QSignalSpy past(&view, &NMEAViewWin::ScrolledPastTop);
    QScrollBar* bar = TextEdit(view)->verticalScrollBar();
    QCOMPARE(bar->value(), bar->maximum());
    TurnWheel(view, 120);
    QVERIFY(bar->value() < bar->maximum());
    bar->setValue(bar->minimum());
    TurnWheel(view, -120);
    QCOMPARE(past.count(), 0);
    bar->setValue(bar->minimum());
    TurnWheel(view, 120);
    QCOMPARE(past.count(), 1);
    QCOMPARE(Text(view).split('\n').size(), 150);

    // What was in the window is there still, or but the few lines of this turn away.
    QVERIFY(bar->value() > 40 && bar->value() <= 50);
    Button(view, "bottomBtn")->click();
    QCOMPARE(bar->value(), bar->maximum());

    // The end stays in sight in a lower window and behind others, but not against the user.
    view.resize(400, 150);
    QTRY_COMPARE(bar->value(), bar->maximum());
    view.hide();
    Send(view, {"$NEW\r\n"});
    view.show();
    QTRY_COMPARE(bar->value(), bar->maximum());
    bar->setValue(20);
    Send(view, {"$NEW\r\n"});
    QTRY_COMPARE(TextEdit(view)->blockCount(), 152);
    QCOMPARE(bar->value(), 20);
}

QTEST_MAIN(TestLogViews)
#include "tst_logviews.moc"
