// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

/// A named command string.
struct CustomCommand {
    QString name;
    QString text;
};

/// The bytes of a command string: for the AT product its Latin-1 text and CR LF, for every other one its
/// hexadecimal digits as QByteArray::fromHex reads them.
QByteArray CustomCommandBytes(const QString& text, int product);

/// The file that keeps the commands: "test.ini" in the application directory.
QString CustomCommandFile();

/// The kept commands, sorted by name.
QVector<CustomCommand> LoadCustomCommands(const QString& path);

/// Replaces the file's content. A file that cannot be written keeps nothing.
void SaveCustomCommands(const QString& path, const QVector<CustomCommand>& commands);
