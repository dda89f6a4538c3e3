// SPDX-License-Identifier: MIT
#include "line/RawCapture.h"

#include "line/PortList.h"

#include <QCoreApplication>
#include <QDataStream>
#include <QDebug>
#include <QDir>
#include <QFile>

QString RawCaptureName(const QString& portName, const QDateTime& time)
{
    return PortFileName(portName) + QLatin1Char('_') + time.toString(QStringLiteral("yyyyMMddhhmmsszzz")) +
           QLatin1String(".bin");
}

QString RawCapturePath(const QString& saveDirectory, const QString& portName, const QDateTime& time)
{
    const QString name = RawCaptureName(portName, time);
    if (!saveDirectory.isEmpty()) {
        return saveDirectory + QDir::separator() + name;
    }
    const QString base = QCoreApplication::applicationDirPath() + QDir::separator() + QLatin1String("GnssData");
    if (!QDir(base).exists()) {
        QDir().mkpath(base);
    }
    return base + QDir::separator() + name;
}

void CreateRawCapture(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        qDebug().noquote() << "Create GnssData file failed!";
    }
}

void AppendRawCapture(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    // Unbuffered: there is one write before the file is closed again.
    if (!file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered)) {
        return;
    }
    QDataStream stream(&file);
    stream.writeRawData(bytes.constData(), bytes.size());
}
