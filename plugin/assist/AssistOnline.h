// SPDX-License-Identifier: MIT
#pragma once

#include "assist/AssistRequest.h"
#include "assist/Injector.h"
#include "widgets/ClosingWidget.h"

#include <cstdint>
#include <memory>

class QNetworkAccessManager;

namespace Ui {
class AssistOnline;
}

/// Fetches a block of assistance records from the service and sends it to the receiver record by record; sends a
/// typed reference position.
class AssistOnline : public ClosingWidget {
    Q_OBJECT

public:
    explicit AssistOnline(QWidget* parent = nullptr);
    ~AssistOnline() override;

    /// Sends the time and the records of a reply body. Pumps events; the window may be gone afterwards.
    void InjectReply(const QByteArray& body);

    /// What the form asks of the service.
    AgnssRequestPara RequestPara() const;

    /// Kept by an injection that ends early and by a position, and told by the next summary.
    const InjectCounters& Counters() const { return m_counters; }

signals:
    void SendMsg(uint8_t* buffer, int len);

public slots:
    void SlotReqAndInject();
    void SlotInjectLoc();
    /// Takes the reply that signals.
    void AgnssDataFetched();

private:
    void SendAgnssRequest(const ServerInfo& server, const AuthInfo& auth, const AgnssRequestPara& para);
    Injector MakeInjector();

    std::unique_ptr<Ui::AssistOnline> ui;
    QNetworkAccessManager* m_manager = nullptr;
    InjectCounters m_counters;
};
