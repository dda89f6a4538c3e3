// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>

/// An ini value as the text that stands in the file: one with an unquoted comma comes as a list.
inline QString IniText(const QVariant& value)
{
    return value.type() == QVariant::StringList ? value.toStringList().join(QLatin1Char(',')) : value.toString();
}
