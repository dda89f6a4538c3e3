// SPDX-License-Identifier: MIT
#pragma once

#include "assist/Injector.h"

#include <QDateTime>

// The items of the predicted assistance, in the order in which they are injected, with the words that go with
// them. The offline assistance and the scene replay share them.

/// A file whose content is one payload. The texts for the status log are looked up with PgnssText.
struct PgnssFile {
    const char* name; ///< of the file
    quint16 commandId;
    quint8 column; ///< text column of its ACK
    const char* openDebug;
    const char* openStatus;
    const char* encodeDebug;
    const char* encodeStatus;
    const char* timeoutStatus;
};

/// The ephemerides of one satellite system. The injected file of the offline assistance is <name>_<time>.eph.
struct PgnssEphemeris {
    PgnssFile file;         ///< its name is the system's
    const char* replayName; ///< file name in a scene's folder
    bool narrowWindow;      ///< taken only within 15 minutes
};

constexpr int kEphemerisCount = 5;
constexpr int kDataFileCount = 7;

extern const PgnssEphemeris kEphemerides[kEphemerisCount];
extern const PgnssFile kDataFiles[kDataFileCount];
extern const PgnssFile kFineIonosphere;

/// A text of the rows in the user's language.
QString PgnssText(const char* text);

/// The UTC time record with its words.
InjectItem PgnssUtcItem(const QDateTime& time);

/// The reference time record with its words.
InjectItem PgnssTimeItem(qint64 unixSeconds);

/// Sends the content of a file.
InjectOutcome InjectPgnssFile(const Injector& injector, const QString& path, const PgnssFile& file);
