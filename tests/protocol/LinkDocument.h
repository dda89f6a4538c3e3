// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QFile>
#include <QRegularExpression>
#include <QString>
#include <QStringList>
#include <QVector>

/// An example of bytes that a document shows: an indented line with a label in front, and what goes on below it.
struct DocumentExample {
    int line;
    QString label;
    QByteArray bytes;
};

/// The bytes of "7e 04 00*3".
inline QByteArray ExampleBytes(const QString& text)
{
    QByteArray bytes;
    for (const QString& token : text.split(' ', Qt::SkipEmptyParts)) {
        const QStringList parts = token.split('*');
        bytes += QByteArray::fromHex(parts[0].toLatin1()).repeated(parts.size() > 1 ? parts[1].toInt() : 1);
    }
    return bytes;
}

/// Every indented line of a document is an example or goes on with one; AT lines and sentences are examples too.
inline QVector<DocumentExample> ExamplesOf(const QString& path)
{
    static const QRegularExpression hexLine("^    (.*?) *((?:(?<= |^)[0-9a-f]{2}(?:\\*\\d+)? ?)+)$");
    static const QRegularExpression textLine("^    (?:(\\S.*?) +)?(AT\\S+|\\+\\S+|\\$\\S+)$");
    QVector<DocumentExample> examples;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return examples;
    }
    const QStringList lines = QString::fromUtf8(file.readAll()).split('\n');
    for (int i = 0; i < lines.size(); ++i) {
        if (!lines[i].startsWith("    ")) {
            continue;
        }
        const QRegularExpressionMatch text = textLine.match(lines[i]);
        const QRegularExpressionMatch hex = hexLine.match(lines[i]);
        if (text.hasMatch()) {
            examples.append({i + 1, text.captured(1) + " AT", text.captured(2).toLatin1()});
        } else if (hex.hasMatch() && hex.captured(1).isEmpty() && !examples.isEmpty()) {
            examples.last().bytes += ExampleBytes(hex.captured(2));
        } else {
            examples.append({i + 1, hex.captured(1), ExampleBytes(hex.captured(2))});
        }
    }
    return examples;
}
