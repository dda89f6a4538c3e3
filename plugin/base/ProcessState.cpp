// SPDX-License-Identifier: MIT
#include "base/ProcessState.h"

#include "base/TrackState.h"

namespace Global {

QString currentPortName;
quint32 currentBaudRate = kDefaultBaudRate;
bool serialOpen = false;
QStringList busyPortNames;
bool pluginConnected = false;
QString loaderPortName;

int ackState = AckStateIdle;
quint8 ackTableColumn = 0;
QString ackMessage;
int lastAckState = AckStateIdle;
quint32 ackCount = 0;
bool positioningStarted = false;
QString firstFixText;
QDateTime startInstant = QDateTime::currentDateTime();

float replaySpeed = 1.0F;
bool replayRunning = false;

int language = 0;
bool showTimestamp = true;

int timeZoneIndex = kTimeZoneBase;

void ResetForNewWindow()
{
    currentPortName.clear();
    currentBaudRate = kDefaultBaudRate;
    serialOpen = false;
    busyPortNames.clear();
    pluginConnected = false;
    loaderPortName.clear();
    ackState = AckStateIdle;
    ackTableColumn = 0;
    ackMessage.clear();
    lastAckState = AckStateIdle;
    ackCount = 0;
    positioningStarted = false;
    firstFixText.clear();
    startInstant = QDateTime::currentDateTime();
    replaySpeed = 1.0F;
    replayRunning = false;
    timeZoneIndex = kTimeZoneBase;
    TrackState::Reset();
}

} // namespace Global
