// SPDX-License-Identifier: MIT
#pragma once

#include "production/UnitTestHost.h"

/// The files of one station's units, in the folder "ProductTest" beside the program.
class StationPapers : public UnitPapers {
public:
    QString ResultPath() override;
    void AddRow(const UnitRecord& unit) override;
    bool WriteReport(const UnitRecord& unit, const QString& rawLogPath) override;

private:
    QString csvPath;
    bool csvHeaderPending = true;
};
