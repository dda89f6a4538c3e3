// SPDX-License-Identifier: MIT
#include "views/PlotColours.h"

namespace {

bool IsLight(const QColor& colour)
{
    return qGray(colour.rgb()) >= 128;
}

} // namespace

QColor PlotBackground(const QPalette& palette)
{
    const QColor& window = palette.color(QPalette::Window);
    return IsLight(window) ? window : QColor(240, 240, 240);
}

QColor TextColourOn(const QColor& fill)
{
    return IsLight(fill) ? Qt::black : Qt::white;
}
