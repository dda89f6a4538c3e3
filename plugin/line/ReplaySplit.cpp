// SPDX-License-Identifier: MIT
#include "line/ReplaySplit.h"

#include <QIODevice>

#include <algorithm>

namespace {

constexpr float fastestSpeed = 60.0F;
constexpr char sentenceType[] = "GGA";
constexpr int typeLength = 3;
constexpr int talkerLength = 3; ///< "$" and two letters
constexpr qint64 readSize = 1 << 20;

} // namespace

void CaptureSplitter::Take(const QByteArray& block)
{
    m_pending.append(block);
    int start = 0;
    for (int i = m_pending.indexOf(sentenceType, m_searched); i >= 0; i = m_pending.indexOf(sentenceType, i + 1)) {
        const int end = i - talkerLength;
        // A GGA at the beginning of a chunk is the chunk's own; one so near the beginning of the file that its
        // "$" is cut off closes nothing either.
        if (end > start) {
            Cut(start, end);
            start = end;
        }
    }
    m_pending.remove(0, start);
    if (m_pending.size() > m_longestChunk) {
        // The last bytes may belong to a GGA that is not here yet.
        const int end = m_pending.size() - talkerLength - typeLength;
        Cut(0, end);
        m_pending.remove(0, end);
    }
    m_searched = std::max(0, m_pending.size() - (typeLength - 1));
}

void CaptureSplitter::Cut(int from, int to)
{
    m_chunks.append(m_pending.mid(from, to - from));
}

QList<QByteArray> CaptureSplitter::TakeChunks()
{
    QList<QByteArray> chunks;
    chunks.swap(m_chunks);
    return chunks;
}

QList<QByteArray> SplitCapture(QIODevice& file)
{
    CaptureSplitter splitter;
    for (QByteArray block = file.read(readSize); !block.isEmpty(); block = file.read(readSize)) {
        splitter.Take(block);
    }
    return splitter.TakeChunks();
}

float ReplaySpeedValue(const QString& text, const QString& fastest)
{
    return text == fastest ? fastestSpeed : text.toFloat();
}

int ReplayIntervalMs(float speed)
{
    return speed > 0.0F ? static_cast<int>(1000.0 / static_cast<double>(speed)) : 1000;
}
