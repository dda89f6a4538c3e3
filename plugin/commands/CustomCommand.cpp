// SPDX-License-Identifier: MIT
#include "commands/CustomCommand.h"

#include "protocol/LinkFrame.h"

#include <QCoreApplication>
#include <QDebug>
#include <QSettings>

namespace {

const char groupName[] = "ConfigCmd";

} // namespace

QByteArray CustomCommandBytes(const QString& text, int product)
{
    const QByteArray latin1 = text.trimmed().toLatin1();
    if (product == protocol::kAtProduct) {
        return latin1 + "\r\n";
    }
    return QByteArray::fromHex(latin1);
}

QString CustomCommandFile()
{
    return QCoreApplication::applicationDirPath() + QLatin1String("/test.ini");
}

QVector<CustomCommand> LoadCustomCommands(const QString& path)
{
    QSettings settings(path, QSettings::IniFormat);
    settings.beginGroup(QLatin1String(groupName));
    QVector<CustomCommand> commands;
    const QStringList names = settings.allKeys();
    commands.reserve(names.size());
    for (const QString& name : names) {
        // A hand-written value with a comma is read as a list.
        commands.append({name, settings.value(name).toStringList().join(QLatin1String(", "))});
    }
    return commands;
}

void SaveCustomCommands(const QString& path, const QVector<CustomCommand>& commands)
{
    QSettings settings(path, QSettings::IniFormat);
    settings.clear();
    for (const CustomCommand& command : commands) {
        settings.setValue(QLatin1String(groupName) + QLatin1Char('/') + command.name, command.text);
        qDebug().nospace().noquote() << command.name << '=' << command.text;
    }
}
