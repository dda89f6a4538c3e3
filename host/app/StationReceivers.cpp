// SPDX-License-Identifier: MIT
#include "host/app/StationReceivers.h"

#include "host/app/SerialPortsVariable.h"

#include <QDir>

StationReceivers::~StationReceivers()
{
    Stop();
}

QStringList UnitArguments(int number, const QStringList& asked)
{
    // Cold starts of the usual half minute would make a line of them slow to watch.
    return QStringList{QStringLiteral("--seed"), QString::number(number), QStringLiteral("--ttff-cold"),
                       QStringLiteral("6,1")} +
           asked;
}

void StationReceivers::Start(const ReceiverSettings& settings, int count)
{
    Stop();
    if (count == 0) {
        return;
    }
    // A short path: it is shown in the narrow port boxes.
    m_folder = std::make_unique<QTemporaryDir>(QDir::tempPath() + QStringLiteral("/gnss-XXXXXX"));
    for (int number = 1; number <= count; ++number) {
        ReceiverSettings unit = settings;
        unit.idle = true;
        unit.capture.clear();
        unit.speed.clear();
        unit.extra = UnitArguments(number, settings.extra);
        unit.link = m_folder->filePath(QStringLiteral("unit%1").arg(number));
        m_units.push_back(std::make_unique<ReceiverProcess>());
        m_units.back()->Start(unit);
    }
}

void StationReceivers::Offer(int milliseconds)
{
    for (const auto& unit : m_units) {
        if (unit->WaitReady(milliseconds) && m_offered.size() < m_units.size()) {
            m_offered.push_back(unit->Port());
            SerialPortsVariable::Add(unit->Port());
        }
    }
}

void StationReceivers::Stop()
{
    for (const QString& port : m_offered) {
        SerialPortsVariable::Remove(port);
    }
    m_offered.clear();
    m_units.clear();
    m_folder.reset();
}
