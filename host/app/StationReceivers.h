// SPDX-License-Identifier: MIT
#pragma once

#include "host/app/ReceiverProcess.h"

#include <QString>
#include <QTemporaryDir>

#include <memory>
#include <vector>

/// The units of a production line: virtual receivers that wait for a start command, each on a port that is offered
/// and that nobody opens before the user does.
class StationReceivers {
public:
    StationReceivers() = default;
    ~StationReceivers();
    StationReceivers(const StationReceivers&) = delete;
    StationReceivers& operator=(const StationReceivers&) = delete;

    /// Starts `count` units; `settings` holds what they share with the receiver of the main window.
    void Start(const ReceiverSettings& settings, int count);
    /// Waits for each and offers its port. Runs the event loop.
    void Offer(int milliseconds);
    void Stop();

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    std::vector<std::unique_ptr<ReceiverProcess>> m_units;
    std::vector<QString> m_offered;
};

/// The command line of a unit beyond what it shares. What the user asks for comes later and counts.
QStringList UnitArguments(int number, const QStringList& asked);
