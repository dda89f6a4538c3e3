// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>

#include <cstdint>

class QStackedWidget;

/// The two commands that carry number parameters: page 0 starts positioning, page 1 stops it. Nothing opens
/// the dialog; it stands ready.
class ShortcutCmdWin : public QDialog {
    Q_OBJECT

public:
    ShortcutCmdWin(int page, QWidget* parent);

signals:
    void SendMsg(uint8_t* outBuff, int outLen);

public slots:
    void SlotSendBtnClicked();
    void SlotCancleBtnClicked();

private:
    QWidget* BuildPage(int page);

    QStackedWidget* m_pages = nullptr;
};

/// Values that the dialog's fields start with: period, count, timeout and reserve.
namespace ShortcutDefaults {
extern int period;
extern int count;
extern int timeout;
extern int reserve;
} // namespace ShortcutDefaults
