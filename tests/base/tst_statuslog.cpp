// SPDX-License-Identifier: MIT
#include "Files.h"
#include "base/ProcessState.h"
#include "base/StatusLog.h"

#include <QRegularExpression>
#include <QTextBlock>
#include <QTextEdit>

namespace {

/// The part of a line that is shown red.
QString RedText(const QTextBlock& block)
{
    QString red;
    for (auto it = block.begin(); !it.atEnd(); ++it) {
        const QBrush brush = it.fragment().charFormat().foreground();
        red += brush == QBrush(Qt::red) ? it.fragment().text() : QString();
    }
    return red;
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
        // Without a log nothing happens.
        SetStatusEdit(nullptr);
        const QString text = m_edit->toPlainText();
        AppendStatus("lost");
        HighlightStatus();
        ClearStatus();
        QCOMPARE(m_edit->toPlainText(), text);
        Global::showTimestamp = true;
    }

    void TextIsShownAsWritten()
    {
        const QStringList texts = {"文件a<b>.txt", "点击  <保存历史信息>  按钮", "&lt;b&gt; and &amp;",
                                   "1 < 2 > 0"};
        for (const QString& text : texts) {
            AppendStatus(text);
        }
        QCOMPARE(m_edit->toPlainText(), texts.join('\n'));
    }

    /// A good line behind each failure stays black, also after a click into an old line.
    void FailuresTurnRed()
    {
        const QStringList lines = {"发送start命令等待 ACK超时", "配置PPS特性 命令参数异常", "启动GNSS定位命令错误",
                                   // No word at the end.
                                   "在线辅助数据下载失败!", "PGNSS注入命令长度异常: 26 bytes"};
        const QStringList red = {"ACK超时", "命令参数异常", "启动GNSS定位命令错误", "失败!", "异常: 26 bytes"};
        for (const QString& text : lines) {
            for (const QString& line : {text, QStringLiteral("读取历史文件成功：26 bytes")}) {
                AppendStatus(line);
                HighlightStatus();
                QVERIFY(!m_edit->textCursor().hasSelection());
                QTextCursor inside = m_edit->textCursor();
                inside.setPosition(5);
                m_edit->setTextCursor(inside);
            }
        }
        QCOMPARE(m_edit->document()->blockCount(), 10);
        for (int i = 0; i < 10; ++i) {
            const QTextBlock block = m_edit->document()->findBlockByNumber(i);
            QCOMPARE(block.text(), i % 2 == 0 ? lines[i / 2] : QStringLiteral("读取历史文件成功：26 bytes"));
            QCOMPARE(RedText(block), i % 2 == 0 ? red[i / 2] : QString());
        }
    }

    void TranslationsKeepTheFailures()
    {
        // A line with one of the patterns must hold a pattern's translation too, or it would stay black; and none
        // without may turn red. These are the contexts whose texts make the log.
        const QStringList writers = {"AgnssReply", "AssistOnline",  "CommandTexts", "ConfigPage",
                                     "GnssWindow", "HisInfoInject", "PgnssItems"};
        const QString catalogue = Content(GNSS_SOURCE_DIR "/translations/gnss_en.ts");
        const QRegularExpression message("<source>([^<]*)</source>[^<]*<translation>([^<]*)</translation>");
        const QRegularExpression patterns("超时|异常|错误|失败");
        QRegularExpression theirs;
        int failures = 0;
        const QStringList contexts = catalogue.split("<name>");
        for (const QString& wanted : QStringList("StatusLogText") + writers) {
            const auto context = std::find_if(contexts.begin(), contexts.end(), [&](const QString& text) {
                return text.startsWith(wanted + "</name>");
            });
            QVERIFY2(context != contexts.end(), qPrintable(wanted));
            QStringList translated;
            for (auto found = message.globalMatch(*context); found.hasNext();) {
                const QRegularExpressionMatch match = found.next();
                const bool fails = match.captured(1).contains(patterns);
                failures += fails ? 1 : 0;
                translated.append(match.captured(2));
                QVERIFY2(fails == match.captured(2).contains(theirs), qPrintable(match.captured(2)));
            }
            if (theirs.pattern().isEmpty()) {
                theirs = QRegularExpression(translated.join('|'), QRegularExpression::CaseInsensitiveOption);
            }
        }
        QCOMPARE(theirs.pattern().count('|'), 3);
        QVERIFY(failures > 24);
    }

private:
    std::unique_ptr<QTextEdit> m_edit;
};

QTEST_MAIN(TestStatusLog)
#include "tst_statuslog.moc"
