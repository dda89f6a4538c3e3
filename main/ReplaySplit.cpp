#include "ReplaySplit.h"

namespace {

constexpr float fastestSpeed = 60.0F;
constexpr int talkerLength = 3; ///< "$" and two letters

} // namespace

QList<QByteArray> SplitCapture(const QByteArray& file)
{
    QList<QByteArray> chunks;
    int start = 0;
    for (int i = file.indexOf("GGA"); i >= 0; i = file.indexOf("GGA", i + 1)) {
        const int end = i - talkerLength;
        // A GGA at the beginning of a chunk is the chunk's own; one so near the beginning of the file that its
        // "$" is cut off closes nothing either.
        if (end <= start) {
            continue;
        }
        chunks.append(file.mid(start, end - start));
        start = end;
    }
    return chunks;
}

float ReplaySpeedValue(const QString& text, const QString& fastest)
{
    return text == fastest ? fastestSpeed : text.toFloat();
}

int ReplayIntervalMs(float speed)
{
    return speed > 0.0F ? static_cast<int>(1000.0 / static_cast<double>(speed)) : 1000;
}
