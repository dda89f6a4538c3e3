// SPDX-License-Identifier: MIT
#include "production/NmeaExtract.h"

#include "base/BoundsChecked.h"
#include "protocol/NmeaScan.h"

#include <QDebug>
#include <QFile>
#include <QFileInfo>
#include <QTextStream>

#include <cstdlib>
#include <memory>

namespace {

constexpr qint64 readSize = 500; ///< bytes

void WriteSentences(QFile& input, QTextStream& output)
{
    const std::unique_ptr<void, decltype(&std::free)> block(std::malloc(sizeof(protocol::NmeaBuff)), &std::free);
    if (!block) {
        qDebug().noquote() << "malloc NmeaBuff failed!!";
        return;
    }
    auto& buff = *static_cast<protocol::NmeaBuff*>(block.get());
    memset_s(&buff, sizeof buff, 0, sizeof buff);
    char bytes[readSize];
    protocol::NmeaSentence sentence;
    // A file that is cut while it is read gives nothing more before it is at its end.
    qint64 count = 0;
    while (!input.atEnd() && (count = input.read(bytes, readSize)) > 0) {
        const char* p = bytes;
        while (protocol::NextNmeaSentence(buff, p, bytes + count, protocol::EndsInChecksum, sentence)) {
            output << QString::fromLatin1(sentence.text, static_cast<int>(sentence.length));
        }
    }
}

} // namespace

QString NmeaOutputPath(const QString& input)
{
    const QFileInfo info(input);
    return info.absolutePath() + '/' + info.completeBaseName() + ".nmea";
}

void ExtractNmea(const QString& input)
{
    QFile file(input);
    if (!file.open(QIODevice::ReadOnly)) {
        return;
    }
    const QString outputPath = NmeaOutputPath(input);
    if (QFileInfo(input) == QFileInfo(outputPath)) {
        return; // opening it for writing would empty it
    }
    QFile output(outputPath);
    if (!output.open(QIODevice::WriteOnly | QIODevice::Text)) {
        return;
    }
    file.seek(0);
    QTextStream stream(&output);
    stream.setCodec("ISO-8859-1"); // bytes inside a sentence pass through unchanged
    WriteSentences(file, stream);
}
