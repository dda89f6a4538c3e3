// SPDX-License-Identifier: MIT
#pragma once

#include "assist/AssistRequest.h"
#include "assist/Injector.h"
#include "widgets/ClosingWidget.h"

#include <QDateTime>

#include <cstdint>
#include <memory>

class QNetworkAccessManager;

namespace Ui {
class AssistOffline;
}

/// Fetches a seed file from the service, has the decoder library expand it and sends what comes out to the
/// receiver in a fixed order; sends a typed reference position. Without the decoder the window still works as far
/// as it can; its absence is told in a box when the window is made.
class AssistOffline : public ClosingWidget {
    Q_OBJECT

public:
    explicit AssistOffline(QWidget* parent = nullptr);
    ~AssistOffline() override;

    /// Kept by an injection that ends early and by a position, and told by the next summary.
    const InjectCounters& Counters() const { return m_counters; }

signals:
    void SendMsg(uint8_t* buffer, int len);

public slots:
    void on_selectPgnssFile_clicked();
    /// Takes the reply that signals.
    void PgnssDataFetched();
    void SlotRequest();
    void SlotInject();
    void SlotInjectLoc();
    /// `index` 0: system time, 1: custom time, read at this moment.
    void SlotSourceChanged(int index);

private:
    void ConnectControls();
    void SendPgnssRequest(const ServerInfo& server, const AuthInfo& auth);
    bool WriteSeed(const QByteArray& body);
    void ShowSeed(const QString& path);
    void ReadCustomTime();

    QDateTime InjectedTime() const;
    bool SeedIsUsable(const QString& seed, qint64 time);
    bool ExpandSeed(const QString& seed, const QString& folder, qint64 time);
    Injector MakeInjector();

    std::unique_ptr<Ui::AssistOffline> ui;
    QNetworkAccessManager* m_manager = nullptr;
    quint32 period = kDefaultPeriod; ///< days, of the last request
    QString m_dataDirectory;
    QString filePath; ///< the seed at the last injection
    InjectCounters m_counters;
    QString m_customUtcText;
    QString m_customUnixText; ///< stored, and read by nothing
    int utcType = 0;          ///< 0 system time, 1 custom time
    QDateTime m_customTime = QDateTime::fromSecsSinceEpoch(0, Qt::UTC);
};
