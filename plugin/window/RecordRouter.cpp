// SPDX-License-Identifier: MIT
#include "window/RecordRouter.h"

#include "assist/HisInfoInject.h"
#include "base/GnssAck.h"
#include "bridge/CallbackRouting.h"
#include "line/SerialLink.h"
#include "window/PositioningControl.h"
#include "window/ViewHost.h"

RecordRouter::RecordRouter(ViewHost& views, SerialLink& link, PositioningControl& positioning,
                           HisInfoInject& history)
    : m_views(views), m_link(link), m_positioning(positioning), m_history(history)
{
}

RecordRouter::~RecordRouter()
{
    if (PublishedRecordTarget() == this) {
        PublishRecordTarget(nullptr);
    }
}

void RecordRouter::OnNmea(const void* record, int length)
{
    m_views.Deliver(protocol::CB_NMEA, record, length);
}

void RecordRouter::OnPackage(const void* record, int length)
{
    m_views.Deliver(protocol::CB_PACKAGE, record, length);
}

void RecordRouter::OnCn0(const void* record, int length)
{
    m_views.Deliver(protocol::CB_CN0, record, length);
}

void RecordRouter::OnPosition(const void* record, int length)
{
    m_views.Deliver(protocol::CB_POSITION, record, length);
}

void RecordRouter::OnSatPos(const void* record, int length)
{
    m_views.Deliver(protocol::CB_SAT_POS, record, length);
}

void RecordRouter::OnCompass(const void* record, int length)
{
    m_views.Deliver(protocol::CB_COMPASS, record, length);
}

void RecordRouter::OnData(const void* record, int length)
{
    m_views.Deliver(protocol::CB_DATA, record, length);
}

void RecordRouter::OnMessage(const void* record, int length)
{
    m_views.Deliver(protocol::CB_MESSAGE, record, length);
}

void RecordRouter::OnKpiPosition(const void* record, int length)
{
    m_views.Deliver(protocol::CB_KPI_POSITION, record, length);
}

void RecordRouter::OnKpiSatellite(const void* record, int length)
{
    m_views.Deliver(protocol::CB_KPI_SATELLITE, record, length);
}

void RecordRouter::OnAck(const void* record, int length)
{
    if (length > 0) {
        GnssAck().ProcAck(record, static_cast<quint32>(length));
    }
}

void RecordRouter::OnSleepWakeup()
{
    m_link.WakeUp();
}

void RecordRouter::OnUartSend(const void* record, int length)
{
    if (record != nullptr && length > 0) {
        m_link.Send(static_cast<const char*>(record), length);
    }
}

void RecordRouter::OnFirstFix()
{
    m_positioning.TakeFirstFix();
}

void RecordRouter::OnHisInfo(const void* record, int length)
{
    m_history.OnHisInfo(record, length);
}
