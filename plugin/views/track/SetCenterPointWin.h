// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>

class AngleRow;

/// Asks for the centre of the track plot: typed in one of three forms, or the average of the track.
class SetCenterPointWin : public QDialog {
    Q_OBJECT

public:
    explicit SetCenterPointWin(QWidget* parent);

signals:
    /// The centre has been set.
    void updateCenterPoint();

public slots:
    void SlotShowModeChanged(int index);
    void SlotAverageBtnClicked();
    void SlotOkBtnClicked();
    void SlotCancelBtnClicked();

private:
    AngleRow* m_longitude;
    AngleRow* m_latitude;
};
