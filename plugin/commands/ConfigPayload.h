// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <QtGlobal>

/// What the command configuration's form holds, with the form's defaults.
struct ConfigForm {
    // Constellations
    bool gps = true;
    bool bds = true;
    bool glo = true;
    bool gal = true;
    bool qzss = true;
    // Start mode
    bool coldStart = false;
    // Sentences
    bool gga = true;
    bool rmc = true;
    bool gll = true;
    bool vtg = true;
    bool gsa = true;
    bool zda = true;
    bool gsv = true;
    bool pn = true;
    // Low power
    bool acqDisable = false;
    bool trkDisable = false;
    // Anti-jam scanning
    bool antDisable = false;
    bool periodWork = true;
    bool weakScan = false;
    // Fix rate
    bool rate1Hz = true;
    bool rate5Hz = false;
    // PPS
    bool ppsDisable = true;
    int ppsWidth = 20; ///< ms, 0 to 255
    // Periodic reports
    bool meas = false;
    bool nav = false;
    // Fix priority
    bool prioAuto = false;
    bool prioTtff = false;
};

/// A page of the form in stack order: its command and its texts.
struct ConfigPage {
    quint16 commandId;
    const char* label; ///< put before the ACK's words
    const char* timeoutText;
    const char* copyFailureText; ///< for the debug log
};

constexpr int kConfigPages = 10;

/// The page at a stack index from 0 to 9.
const ConfigPage& ConfigPageAt(int index);

/// A text of a page in the user's language.
QString ConfigPageText(const char* text);

/// The payload of the page at a stack index from 0 to 9.
QByteArray ConfigPayload(int index, const ConfigForm& form);
