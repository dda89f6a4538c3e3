// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QPalette>

/// The background of a plot whose lines and texts are black whatever the palette: the palette's window colour
/// where black can be read on it, else a light gray.
QColor PlotBackground(const QPalette& palette);

/// Black or white, whichever reads better on `fill`.
QColor TextColourOn(const QColor& fill);
