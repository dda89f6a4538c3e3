// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QMap>
#include <QSet>

#include <string>

/// Counts what a capture holds, independent of the codec: sentences with a right checksum, times with a valid
/// position, satellites in the latest lists. Bytes may come cut anywhere.
class NmeaCounter {
public:
    void Feed(const char* bytes, qint64 length);

    qint64 Bytes() const { return m_bytes; }
    qint64 Sentences() const { return m_sentences; }
    /// Distinct times of day with a valid position.
    int Fixes() const { return m_fixTimes.size(); }
    /// Satellites with a direction in each talker's latest GSV group.
    int Satellites() const;

private:
    void TakeByte(char byte);
    void TakeLine();
    void TakeSentence(const QList<QByteArray>& fields);
    void TakeGsv(const QList<QByteArray>& fields);

    std::string m_line;
    bool m_inLine = false;
    qint64 m_bytes = 0;
    qint64 m_sentences = 0;
    QSet<QByteArray> m_fixTimes;
    QMap<QByteArray, QSet<QByteArray>> m_groups; // satellites by talker and signal
};
