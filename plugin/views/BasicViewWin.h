// SPDX-License-Identifier: MIT
#pragma once

#include "widgets/ClosingWidget.h"

class QComboBox;
class QLineEdit;

/// The latest fix as a small form, with its date and time in a time zone of choice. The workbench itself doesn't
/// open it; it is there for a host that wants the compact form.
class BasicViewWin : public ClosingWidget {
    Q_OBJECT

public:
    explicit BasicViewWin(QWidget* parent);
    ~BasicViewWin() override;

    /// Takes a FixRecord; `length` in bytes.
    void OnRecord(const void* buffer, int length);

public slots:
    /// Chooses a zone for all basic views; what they show moves by as many hours as the zone lies further.
    void SlotTimeZoneChanged(int index);

private:
    void ShowZone(int index);
    void MoveShownTime(int hours);

    QLineEdit* m_longitude = nullptr;
    QLineEdit* m_latitude = nullptr;
    QLineEdit* m_altitude = nullptr;
    QLineEdit* m_time = nullptr;
    QLineEdit* m_date = nullptr;
    QComboBox* m_zone = nullptr;
};
