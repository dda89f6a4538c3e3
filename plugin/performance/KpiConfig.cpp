// SPDX-License-Identifier: MIT
#include "performance/KpiConfig.h"

#include "base/IniText.h"

#include <QFile>
#include <QSettings>
#include <QStringList>

namespace {

constexpr char fileName[] = "Config.ini";
constexpr char groupName[] = "TestCfg";

// In the order of the entries.
constexpr const char* keys[KpiConfigEntries] = {
    "ColdStartTest",    "ColdStartTestAgnss",   "ColdStartTestPgnss", "ColdStartTestNum",   "ColdStartTestTimeout",
    "ColdStartTestInr", "ColdStartTestTrkTime", "HotStartTest",       "HotStartTestAgnss",  "HotStartTestPgnss",
    "HotStartTestNum",  "HotStartTestTimeout",  "HotStartTestInr",    "HotStartTestTrkTime"};

// Which entry stands at which place of the sorted key list.
constexpr KpiConfigEntry sortedEntries[KpiConfigEntries] = {
    KpiColdStart, KpiColdAgnss, KpiColdInr, KpiColdNum, KpiColdPgnss, KpiColdTimeout, KpiColdTrkTime,
    KpiHotStart,  KpiHotAgnss,  KpiHotInr,  KpiHotNum,  KpiHotPgnss,  KpiHotTimeout,  KpiHotTrkTime};

quint16 Low16(const QString& text)
{
    return static_cast<quint16>(text.toUInt() & 0xFFFFu);
}

} // namespace

KpiTestConfig ParseKpiConfig(const KpiConfigTexts& texts)
{
    KpiTestConfig config;
    config.coldNum = texts[KpiColdNum].toUInt();
    config.coldTimeout = Low16(texts[KpiColdTimeout]);
    config.coldInr = Low16(texts[KpiColdInr]);
    config.coldTrkTime = Low16(texts[KpiColdTrkTime]);
    config.hotNum = texts[KpiHotNum].toUInt();
    config.hotTimeout = Low16(texts[KpiHotTimeout]);
    config.hotInr = Low16(texts[KpiHotInr]);
    config.hotTrkTime = Low16(texts[KpiHotTrkTime]);
    return config;
}

bool LoadKpiConfig(KpiConfigTexts& texts)
{
    if (!QFile(QLatin1String(fileName)).exists()) {
        return false;
    }
    QSettings settings(QLatin1String(fileName), QSettings::IniFormat);
    settings.beginGroup(QLatin1String(groupName));
    const QStringList found = settings.allKeys();
    if (found.size() != KpiConfigEntries) {
        return false;
    }
    for (int place = 0; place < KpiConfigEntries; ++place) {
        texts[sortedEntries[place]] = IniText(settings.value(found.at(place)));
    }
    return true;
}

void SaveKpiConfig(const KpiConfigTexts& texts)
{
    QSettings settings(QLatin1String(fileName), QSettings::IniFormat);
    settings.clear();
    settings.beginGroup(QLatin1String(groupName));
    for (int entry = 0; entry < KpiConfigEntries; ++entry) {
        const QString& text = texts[static_cast<std::size_t>(entry)];
        const QString key = QLatin1String(keys[entry]);
        if (IsKpiTick(entry)) {
            settings.setValue(key, text == QLatin1String("true"));
        } else {
            settings.setValue(key, text.isEmpty() ? QStringLiteral("0") : text);
        }
    }
    settings.endGroup();
}
