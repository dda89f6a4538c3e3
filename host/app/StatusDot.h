// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

// Colours of the dots in the window's status bar.
constexpr char kDotGood[] = "#2e9e5b";
constexpr char kDotBad[] = "#d64545";
constexpr char kDotOff[] = "#8a96a3";

/// A dot in `colour` and the plain `text` behind it, as rich text.
inline QString StatusDot(const char* colour, const QString& text)
{
    return QStringLiteral("<span style=\"color:%1\">&#9679;</span> %2")
        .arg(QLatin1String(colour), text.toHtmlEscaped());
}
