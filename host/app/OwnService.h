// SPDX-License-Identifier: MIT
#pragma once

#include "host/app/HostOptions.h"
#include "host/app/ServiceProcess.h"

/// The host's own assistance service: started once, and written where the workbench looks for its service. Where
/// the user has named another service only that one's authority is trusted.
class OwnService : public QObject {
    Q_OBJECT

public:
    OwnService();

    /// Of all calls the first counts.
    void Start(const HostOptions& options);

private:
    void Use(const QString& host);

    ServiceProcess m_process;
    bool m_tried = false;
};
