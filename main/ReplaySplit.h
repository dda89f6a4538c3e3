#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

/// Splits a capture at its GGA sentences: each chunk runs from one "$" of a GGA sentence with a two-letter
/// talker up to the next. A GGA that begins the file closes no chunk, and what follows the last one is
/// dropped.
QList<QByteArray> SplitCapture(const QByteArray& file);

/// Chunks per second for a text of the speed menu; `fastest` is the text of its last entry.
float ReplaySpeedValue(const QString& text, const QString& fastest);

/// Milliseconds between two chunks.
int ReplayIntervalMs(float speed);
