// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QPointer>
#include <QString>

#include <functional>

class QFile;
class QSerialPort;

/// How the two windows that load firmware differ.
struct FirmwareLoadRules {
    bool narrowCounters;    ///< the record counters have 8 bits and wrap
    bool needsVersion;      ///< an empty version is a failed load, without a message
    bool versionToDebugLog; ///< the version goes to the debug log too
};
constexpr FirmwareLoadRules kDialogLoadRules{false, false, true};
constexpr FirmwareLoadRules kStationLoadRules{true, true, false};

enum class FirmwareLoadOutcome {
    Loaded,
    Failed,    ///< its words are in the log
    NoFile,    ///< the image cannot be opened
    OwnerGone, ///< the owner was destroyed inside a wait, and the port with it: touch no member of it
};

/// Plays an image to the loader on an open port and reads the version that the receiver tells afterwards. The port
/// belongs to the owner, who may be destroyed in any of the waits. Nothing is retried. The port stays as it is.
class FirmwareLoad {
    Q_DECLARE_TR_FUNCTIONS(FirmwareLoad)

public:
    using Pump = std::function<void(int milliseconds)>;
    using Log = std::function<void(const QString& line)>;
    using Progress = std::function<void(int percent)>;

    static constexpr int messageWaitMs = 100;
    static constexpr int answerWaitMs = 50;
    static constexpr int versionWaitMs = 1000;

    FirmwareLoad(const QPointer<QObject>& owner, QSerialPort& port, const FirmwareLoadRules& rules);

    Log log = [](const QString&) {};
    Progress progress = [](int) {};
    Pump pump; ///< keeps the event loop going; StationWait unless set

    FirmwareLoadOutcome Run(const QString& imagePath);

private:
    enum class Pass { Done, Failed, OwnerGone };

    void CountRecords(QFile& file);
    Pass Replay(QFile& file);
    bool SendMessage(const std::string& message);
    bool TakeAnswer();
    QString ReadVersion();
    int Counted(int value) const;
    void ShowProgress() const;

    QPointer<QObject> m_owner;
    QSerialPort& m_port;
    FirmwareLoadRules m_rules;
    int m_total = 0;
    int m_done = 0;
};
