// SPDX-License-Identifier: MIT
#pragma once

#include "base/AckState.h"

#include <QDateTime>
#include <QString>
#include <QStringList>

/// The languages by their numbers in the language setting.
enum Language { LanguageEnglish = 1, LanguageChinese = 2 };

/// The values that classes share across the whole process. They survive a window, so a new window resets
/// those of the link, the commands and the replay.
namespace Global {

// Serial link
extern QString currentPortName;   ///< port to use; empty when there is none
extern quint32 currentBaudRate;   ///< bits per second
extern bool serialOpen;           ///< mirrors an open port
extern QStringList busyPortNames; ///< ports that exist but cannot be opened
extern bool pluginConnected;      ///< stored for the host, read by nothing
extern QString loaderPortName;    ///< the last port that the firmware window was changed to

// Commands
extern int ackState;            ///< an AckStateValue
extern quint8 ackTableColumn;   ///< text column of the command table for the next ACK
extern QString ackMessage;      ///< the last ACK in words
extern int lastAckState;        ///< the status of the last ACK, also after its waiter has gone back to idle
extern quint32 ackCount;        ///< ACK records so far; lets nested waits end together
extern bool positioningStarted; ///< true after an accepted start
extern QString firstFixText;    ///< time to first fix as shown; empty until the first fix after a start
extern QDateTime startInstant;  ///< time of the last answered start

// Replay
extern float replaySpeed;  ///< chunks per second
extern bool replayRunning; ///< from the start of a replay to its end, also while paused

// Window
extern int language;       ///< a Language; 0 before it is read
extern bool showTimestamp; ///< the status log's lines carry the time

// Views
constexpr int kTimeZoneBase = 19; ///< index of the zone that shows a time unchanged, "UTC+8"
extern int timeZoneIndex;         ///< the basic views' zone, which outlives them

constexpr quint32 kDefaultBaudRate = 115200;

/// Gives the values of link, commands, replay and views their defaults, with those of TrackState: the one reset,
/// for a new window and between tests. Language and time stamps stay.
void ResetForNewWindow();

} // namespace Global
