// SPDX-License-Identifier: MIT
#pragma once

#include "widgets/ClosingWidget.h"

class QLabel;

/// How many fixes the receiver has reported, and when the last one was.
class FixCountViewWin : public ClosingWidget {
    Q_OBJECT

public:
    explicit FixCountViewWin(QWidget* parent);

    /// Takes a FixRecord; `length` in bytes.
    void OnRecord(const void* buffer, int length);

private:
    int m_fixes = 0;
    QLabel* m_text;
};
