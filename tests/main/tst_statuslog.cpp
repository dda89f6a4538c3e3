#include "main/ProcessState.h"
#include "main/StatusLog.h"

#include <QTextBlock>
#include <QTextEdit>
#include <QXmlStreamReader>
#include <QtTest>

#include <algorithm>

namespace {

/// The part of a line that is shown red.
QString RedText(const QTextEdit& edit, int line)
{
    const QTextBlock block = edit.document()->findBlockByNumber(line);
    QString red;
    for (auto it = block.begin(); !it.atEnd(); ++it) {
        const QTextCharFormat format = it.fragment().charFormat();
        if (format.foreground().style() == Qt::SolidPattern && format.foreground().color() == Qt::red) {
            red += it.fragment().text();
        }
    }
    return red;
}

QString Line(const QTextEdit& edit, int line)
{
    return edit.document()->findBlockByNumber(line).text();
}

} // namespace

class TestStatusLog : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        Global::showTimestamp = false;
        m_edit = std::make_unique<QTextEdit>();
        m_edit->setReadOnly(true);
        SetStatusEdit(m_edit.get());
    }

    void cleanup()
    {
        SetStatusEdit(nullptr);
        Global::showTimestamp = true;
    }

    void WithoutALogNothingHappens()
    {
        SetStatusEdit(nullptr);
        AppendStatus("lost");
        HighlightStatus();
        ClearStatus();
        ScrollStatusToEnd();
        QVERIFY(m_edit->toPlainText().isEmpty());
    }

    void LinesCarryTheTimeWhenAsked()
    {
        AppendStatus("a");
        Global::showTimestamp = true;
        AppendStatus("b");
        QCOMPARE(Line(*m_edit, 0), QStringLiteral("a"));
        QVERIFY(QRegularExpression("^\\[\\d\\d:\\d\\d:\\d\\d\\] b$").match(Line(*m_edit, 1)).hasMatch());
    }

    void TextIsShownAsWritten_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("tag in a file name") << "文件a<b>.txt";
        QTest::newRow("quoted button, blanks kept") << "点击  <保存历史信息>  按钮";
        QTest::newRow("entity") << "&lt;b&gt; and &amp;";
        QTest::newRow("comparison") << "1 < 2 > 0";
    }

    void TextIsShownAsWritten()
    {
        QFETCH(QString, text);
        AppendStatus(text);
        QCOMPARE(m_edit->toPlainText(), text);
    }

    void FailuresTurnRed_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("red");
        QTest::newRow("timeout word") << "发送start命令等待 ACK超时"
                                      << "ACK超时";
        QTest::newRow("parameter") << "配置PPS特性 命令参数异常"
                                   << "命令参数异常";
        QTest::newRow("refused") << "启动GNSS定位命令错误"
                                 << "启动GNSS定位命令错误";
        QTest::newRow("good") << "停止GNSS定位"
                              << "";
        QTest::newRow("no word at the end: exclamation mark") << "在线辅助数据下载失败!"
                                                              << "失败!";
        QTest::newRow("no word at the end: number") << "PGNSS注入命令长度异常: 26 bytes"
                                                    << "异常: 26 bytes";
        QTest::newRow("good with number") << "读取历史文件成功：26 bytes"
                                          << "";
    }

    void FailuresTurnRed()
    {
        QFETCH(QString, text);
        QFETCH(QString, red);
        AppendStatus(text);
        HighlightStatus();
        QCOMPARE(Line(*m_edit, 0), text);
        QCOMPARE(RedText(*m_edit, 0), red);
        QVERIFY(!m_edit->textCursor().hasSelection());

        // What follows is not touched by it.
        AppendStatus("正常");
        HighlightStatus();
        QCOMPARE(RedText(*m_edit, 1), QString());
        QCOMPARE(RedText(*m_edit, 0), red);
    }

    void AClickIntoAnOldLineChangesNothing()
    {
        AppendStatus("等待 ACK超时");
        HighlightStatus();
        QTextCursor inside = m_edit->textCursor();
        inside.setPosition(m_edit->document()->findBlockByNumber(0).position() + 5);
        m_edit->setTextCursor(inside);
        AppendStatus("好");
        HighlightStatus();
        inside.setPosition(1);
        m_edit->setTextCursor(inside);
        AppendStatus("命令错误");
        HighlightStatus();
        QCOMPARE(RedText(*m_edit, 0), QStringLiteral("ACK超时"));
        QCOMPARE(RedText(*m_edit, 1), QString());
        QCOMPARE(RedText(*m_edit, 2), QStringLiteral("命令错误"));
        QCOMPARE(m_edit->document()->blockCount(), 3);
    }

    void TranslationsKeepTheFailures()
    {
        // A line with one of the patterns must hold a pattern's translation too, or it would stay black; and none
        // without may turn red. These are the contexts whose texts make the log.
        const QStringList writers = {"AgnssReply", "AssistOnline",  "CommandTexts", "ConfigPage",
                                     "GnssWindow", "HisInfoInject", "PgnssItems"};
        const QStringList patterns = {"超时", "异常", "错误", "失败"};
        QFile file(GNSS_SOURCE_DIR "/translations/gnss_en.ts");
        QVERIFY(file.open(QIODevice::ReadOnly));
        QXmlStreamReader xml(&file);
        QString context;
        QStringList translated;
        QVector<QPair<QString, QString>> lines;
        while (!xml.atEnd()) {
            if (xml.readNext() != QXmlStreamReader::StartElement) {
                continue;
            }
            if (xml.name() == "name") {
                context = xml.readElementText();
            } else if (xml.name() == "source") {
                const QString source = xml.readElementText();
                xml.readNextStartElement();
                const QString translation = xml.readElementText();
                if (context == "StatusLogText") {
                    translated.append(translation);
                } else if (writers.contains(context)) {
                    lines.append({source, translation});
                }
            }
        }
        QVERIFY(!xml.hasError());
        QCOMPARE(translated.size(), patterns.size());
        auto holdsOneOf = [](const QStringList& words, const QString& text) {
            return std::any_of(words.cbegin(), words.cend(),
                               [&text](const QString& word) { return text.contains(word, Qt::CaseInsensitive); });
        };
        int failures = 0;
        for (const auto& line : lines) {
            const bool fails = holdsOneOf(patterns, line.first);
            failures += fails ? 1 : 0;
            QVERIFY2(fails == holdsOneOf(translated, line.second), qPrintable(line.second));
        }
        QVERIFY(failures > 20);
    }

private:
    std::unique_ptr<QTextEdit> m_edit;
};

QTEST_MAIN(TestStatusLog)
#include "tst_statuslog.moc"
