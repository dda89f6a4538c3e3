// SPDX-License-Identifier: MIT
#include "base/StatusLog.h"

#include "base/ProcessState.h"

#include <QCoreApplication>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextEdit>
#include <QTime>

namespace {

/// Translation context of the patterns.
class StatusLogText {
    Q_DECLARE_TR_FUNCTIONS(StatusLogText)
};

QTextEdit* statusEdit = nullptr;

// Searched in this order. The texts that they are searched in go through tr as well, so the patterns do too.
QStringList FailurePatterns()
{
    return {StatusLogText::tr("超时"), StatusLogText::tr("异常"), StatusLogText::tr("错误"),
            StatusLogText::tr("失败")};
}

/// Position of the first pattern (in the patterns' order) that `text` holds, or -1.
int FindFailure(const QString& text)
{
    const QStringList patterns = FailurePatterns();
    for (const QString& pattern : patterns) {
        const QRegularExpression expression(QRegularExpression::escape(pattern),
                                            QRegularExpression::CaseInsensitiveOption);
        const QRegularExpressionMatch match = expression.match(text);
        if (match.hasMatch()) {
            return match.capturedStart();
        }
    }
    return -1;
}

void PaintSelectionRed(QTextCursor& cursor)
{
    const QString text = cursor.selectedText();
    QTextCharFormat red;
    red.setForeground(QBrush(Qt::red, Qt::SolidPattern));
    cursor.insertText(text, red);
}

} // namespace

void SetStatusEdit(QTextEdit* edit)
{
    statusEdit = edit;
}

QTextEdit* StatusEdit()
{
    return statusEdit;
}

void AppendStatus(const QString& text)
{
    if (statusEdit == nullptr) {
        return;
    }
    QString line = text;
    if (Global::showTimestamp) {
        line = QLatin1Char('[') + QTime::currentTime().toString(QStringLiteral("hh:mm:ss")) + QLatin1String("] ") +
               text;
    }
    // append() reads markup; a path or a quoted button name must come out as written.
    if (Qt::mightBeRichText(line)) {
        line = QLatin1String("<span style=\"white-space:pre-wrap\">") + line.toHtmlEscaped() +
               QLatin1String("</span>");
    }
    // The cursor and its format are moved on, so that neither a click into an old line nor a red last word
    // reaches the new one.
    statusEdit->moveCursor(QTextCursor::End);
    statusEdit->setCurrentCharFormat(QTextCharFormat());
    statusEdit->append(line);
    statusEdit->moveCursor(QTextCursor::End);
}

void HighlightStatus()
{
    if (statusEdit == nullptr) {
        return;
    }
    QTextCursor cursor = statusEdit->textCursor();
    cursor.select(QTextCursor::WordUnderCursor);
    if (FindFailure(cursor.selectedText()) >= 0) {
        PaintSelectionRed(cursor);
    } else {
        // A line that ends in punctuation or a number has no word at its end; then the line is tested and
        // coloured from the failure on.
        cursor.clearSelection();
        const QTextBlock block = statusEdit->document()->lastBlock();
        const int at = FindFailure(block.text());
        if (at >= 0) {
            cursor.setPosition(block.position() + at);
            cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
            PaintSelectionRed(cursor);
        }
    }
    cursor.clearSelection();
    cursor.setCharFormat(QTextCharFormat());
    statusEdit->setTextCursor(cursor);
}

void ClearStatus()
{
    if (statusEdit != nullptr) {
        statusEdit->clear();
    }
}

void ScrollStatusToEnd()
{
    if (statusEdit != nullptr) {
        QScrollBar* bar = statusEdit->verticalScrollBar();
        bar->setValue(bar->maximum());
    }
}
