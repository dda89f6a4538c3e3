// SPDX-License-Identifier: MIT
#include "host/app/SerialPortsVariable.h"

#include <QFile>
#include <QStringList>

namespace SerialPortsVariable {

namespace {

constexpr char kName[] = "GNSS_SERIAL_PORTS";

QString Value()
{
    return QFile::decodeName(qgetenv(kName));
}

void Set(const QString& value)
{
    if (value.isEmpty()) {
        qunsetenv(kName);
    } else {
        qputenv(kName, QFile::encodeName(value));
    }
}

} // namespace

QString With(const QString& value, const QString& path)
{
    const QString rest = Without(value, path);
    return rest.isEmpty() ? path : path + QLatin1Char(':') + rest;
}

QString Without(const QString& value, const QString& path)
{
    QStringList paths = value.split(QLatin1Char(':'), Qt::SkipEmptyParts);
    paths.removeAll(path);
    return paths.join(QLatin1Char(':'));
}

void Add(const QString& path)
{
    Set(With(Value(), path));
}

void Remove(const QString& path)
{
    Set(Without(Value(), path));
}

} // namespace SerialPortsVariable
