// SPDX-License-Identifier: MIT
#pragma once

/// Where the codec's records go: one operation per callback number. The main window implements it and
/// publishes itself; the routing knows nothing else of it.
class RecordTarget {
public:
    virtual ~RecordTarget() = default;

    virtual void OnNmea(const void* data, int length) = 0;
    virtual void OnPackage(const void* data, int length) = 0;
    virtual void OnCn0(const void* data, int length) = 0;
    virtual void OnPosition(const void* data, int length) = 0;
    virtual void OnSatPos(const void* data, int length) = 0;
    virtual void OnCompass(const void* data, int length) = 0;
    virtual void OnData(const void* data, int length) = 0;
    virtual void OnMessage(const void* data, int length) = 0;
    virtual void OnAck(const void* data, int length) = 0;
    virtual void OnSleepWakeup() = 0;
    virtual void OnUartSend(const void* data, int length) = 0;
    virtual void OnKpiPosition(const void* data, int length) = 0;
    virtual void OnKpiSatellite(const void* data, int length) = 0;
    virtual void OnFirstFix() = 0;
    virtual void OnHisInfo(const void* data, int length) = 0;
};
