// SPDX-License-Identifier: MIT
#pragma once

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QtTest>

/// What a file holds, empty when there is none.
inline QByteArray Content(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Writes a file into a folder that is made when needed; `mode` is added to its permissions.
inline void WriteFile(const QString& path, const QByteArray& bytes, QFile::Permissions mode = {})
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    QVERIFY2(file.open(QIODevice::WriteOnly | QIODevice::Truncate), qPrintable(path));
    QCOMPARE(file.write(bytes), qint64(bytes.size()));
    QVERIFY(file.setPermissions(file.permissions() | mode));
}

/// Writes a shell script.
inline void WriteScript(const QString& path, const QByteArray& body)
{
    WriteFile(path, body.startsWith("#!") ? body : "#!/bin/sh\n" + body + '\n', QFile::ExeOwner);
}
