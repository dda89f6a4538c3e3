// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

class QIODevice;

/// Splits a capture at its GGA sentences: each chunk runs from one "$" of a GGA sentence with a two-letter
/// talker up to the next. A GGA that begins the file closes no chunk, and what follows the last one is
/// dropped. The capture comes in blocks of any size, so that its own size has no limit.
class CaptureSplitter {
public:
    /// Bytes from one GGA to the next at which a chunk is cut all the same: more would not go into one array.
    static constexpr int kLongestChunk = 1 << 30;

    explicit CaptureSplitter(int longestChunk = kLongestChunk) : m_longestChunk(longestChunk) {}

    void Take(const QByteArray& block);
    /// The chunks so far, which the splitter gives away.
    QList<QByteArray> TakeChunks();

private:
    void Cut(int from, int to);

    int m_longestChunk;
    QByteArray m_pending; ///< from the last cut on
    int m_searched = 0;   ///< bytes of it in which no GGA begins any more
    QList<QByteArray> m_chunks;
};

/// Reads to the end of the file, or to where it can be read.
QList<QByteArray> SplitCapture(QIODevice& file);

/// Chunks per second for a text of the speed menu; `fastest` is the text of its last entry.
float ReplaySpeedValue(const QString& text, const QString& fastest);

/// Milliseconds between two chunks.
int ReplayIntervalMs(float speed);
