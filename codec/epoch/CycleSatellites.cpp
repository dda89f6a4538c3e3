// SPDX-License-Identifier: MIT
#include "codec/epoch/CycleSatellites.h"

namespace codec {

void CycleSatellites::Reset()
{
    m_gsvSeen = false;
    m_used.Clear();
    m_lists[0].Clear();
    m_lists[1].Clear();
}

void CycleSatellites::Take(const GsaSentence& sentence)
{
    for (int i = 0; i < sentence.count; ++i) {
        m_used.Add(sentence.used[i].id);
    }
}

void CycleSatellites::BeginList()
{
    m_gsvSeen = true;
    m_current = 1 - m_current;
    m_lists[m_current].Clear();
}

void CycleSatellites::Take(const GsvSentence& gsv, TalkerSystem talker)
{
    SatelliteList& list = m_lists[m_current];
    list.Add(gsv);
    if (talker) {
        list.MarkSystem(*talker);
    }
}

void CycleSatellites::Send(RecordSink& sink)
{
    m_gsvSeen = false;
    const SatelliteList* list = &m_lists[m_current];
    const SatelliteList& before = m_lists[1 - m_current];
    bool incomplete = false;
    for (const System system : kListOrder) {
        incomplete = incomplete || (before.HasSystem(system) && !list->HasSystem(system));
    }
    if (incomplete) {
        // A receiver may list its constellations in turns, or its cycle may have been taken to end too early:
        // a constellation stays for one list more.
        m_joined = *list;
        for (const System system : kListOrder) {
            if (before.HasSystem(system) && !list->HasSystem(system)) {
                m_joined.AddSystem(before, system);
            }
        }
        list = &m_joined;
    }
    protocol::Cn0Record cn0;
    list->Fill(cn0, m_used);
    sink.OnCn0(cn0);
    protocol::SatPosRecord satPos;
    list->Fill(satPos, m_used);
    sink.OnSatPos(satPos);
    protocol::KpiCn0Record kpi;
    list->Fill(kpi, m_used);
    sink.OnKpiCn0(kpi);
}

} // namespace codec
