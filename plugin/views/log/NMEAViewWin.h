// SPDX-License-Identifier: MIT
#pragma once

#include "views/log/LogTextView.h"

class QLineEdit;

/// The receiver's sentences as running text, with a filter that cuts the log as well.
class NMEAViewWin : public LogTextView {
    Q_OBJECT

public:
    explicit NMEAViewWin(QWidget* parent);

    /// Takes an NmeaText record; `length` in bytes.
    void OnRecord(const void* buffer, int length);

public slots:
    void SlotFilterBtnClicked();

private:
    QToolButton* filterBtn = nullptr;
    QLineEdit* filterEdit = nullptr;
    bool filterOn = false;
};
