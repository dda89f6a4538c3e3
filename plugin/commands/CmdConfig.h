// SPDX-License-Identifier: MIT
#pragma once

#include "commands/ConfigPayload.h"
#include "widgets/ClosingWidget.h"

#include <cstdint>
#include <memory>

class QModelIndex;
class QStringListModel;

namespace Ui {
class CmdConfig;
}

/// Sets the receiver's ten persistent behaviours, one at a time. Nothing is read back: the form shows its own
/// last state.
class CmdConfig : public ClosingWidget {
    Q_OBJECT

public:
    explicit CmdConfig(QWidget* parent);
    ~CmdConfig() override;

signals:
    void SendMsg(uint8_t* buffer, int len);

public slots:
    /// Sends the page that shows and waits for its ACK.
    void SlotSendClicked();

private:
    void LetPagesScroll();
    void FillList();
    void ConnectControls();
    ConfigForm Form() const;

    std::unique_ptr<Ui::CmdConfig> ui;
    QStringListModel* m_listModel = nullptr;
};
