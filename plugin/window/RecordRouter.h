// SPDX-License-Identifier: MIT
#pragma once

#include "bridge/RecordTarget.h"

class HisInfoInject;
class PositioningControl;
class SerialLink;
class ViewHost;

/// Takes the codec's records: those that are shown go to the views, the others to whom they concern.
class RecordRouter : public RecordTarget {
public:
    RecordRouter(ViewHost& views, SerialLink& link, PositioningControl& positioning, HisInfoInject& history);
    ~RecordRouter() override;

    void OnNmea(const void* record, int length) override;
    void OnPackage(const void* record, int length) override;
    void OnCn0(const void* record, int length) override;
    void OnPosition(const void* record, int length) override;
    void OnSatPos(const void* record, int length) override;
    void OnCompass(const void* record, int length) override;
    void OnData(const void* record, int length) override;
    void OnMessage(const void* record, int length) override;
    void OnAck(const void* record, int length) override;
    void OnSleepWakeup() override;
    void OnUartSend(const void* record, int length) override;
    void OnKpiPosition(const void* record, int length) override;
    void OnKpiSatellite(const void* record, int length) override;
    void OnFirstFix() override;
    void OnHisInfo(const void* record, int length) override;

private:
    ViewHost& m_views;
    SerialLink& m_link;
    PositioningControl& m_positioning;
    HisInfoInject& m_history;
};
