// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/Records.h"

#include <QString>

/// The latest fix as the table shows it.
struct KpiFixTexts {
    QString date;
    QString time;
    QString hdop; ///< shows the heading: the record carries no dilution
    QString latitude;
    QString longitude;
    QString altitude;
    QString speed;
};

KpiFixTexts KpiTextsOf(const protocol::KpiFixRecord& fix);
