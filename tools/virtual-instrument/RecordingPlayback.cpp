// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/virtual-instrument/RecordingPlayback.h"

#include <algorithm>

using namespace recording;

namespace {

/// A host takes a multimeter reading for settled when it repeats.
constexpr int cRepeatsOfReading = 5;

bool earlier(const RecordingPlayback::Step& a, const RecordingPlayback::Step& b)
{
    return a.at < b.at;
}

} // namespace

Error RecordingPlayback::open(const QString& path)
{
    if (!m_reader.open(path))
        return m_reader.error();
    m_info = m_reader.info();
    for (const Gap& gap : m_reader.gaps()) {
        if (gap.reason != GapReason::Unplugged && gap.reason != GapReason::NotConnected)
            continue;
        m_events.push_back({gap.from, Kind::Unplug, {}});
        if (gap.to)
            m_events.push_back({*gap.to, Kind::Plug, {}});
    }
    for (const MultimeterRecord& record : m_reader.multimeterRecords())
        m_events.insert(m_events.end(), cRepeatsOfReading,
                        {record.at, Kind::Packet,
                         protocol::encode(protocol::MultimeterReading{record.mode, record.text})});
    for (const ScreenChange& change : m_reader.screenChanges()) {
        protocol::UiControl control;
        control.direction = protocol::InstrumentReport;
        control.layer0 = change.layer0;
        control.layer1 = change.layer1;
        m_events.push_back({change.at, Kind::Packet, protocol::encode(control)});
    }
    std::stable_sort(m_events.begin(), m_events.end(), earlier);
    return m_reader.error();
}

std::vector<RecordingPlayback::Step> RecordingPlayback::advance(Time passed)
{
    const Time end = m_position + passed;
    std::vector<Step> steps;
    // First: the measurement that ends a gap comes after the plug, of the same time.
    for (; m_nextEvent < m_events.size() && m_events[m_nextEvent].at < end; ++m_nextEvent)
        steps.push_back(m_events[m_nextEvent]);
    m_reader.measurements({m_position, end}, [&steps](const Measurement& measurement) {
        steps.push_back({measurement.at, Kind::Packet, protocol::encode(measurement.values)});
        return true;
    });
    // A gap begins with the last measurement before it, which must not be lost by the unplugging.
    std::stable_sort(steps.begin(), steps.end(), [](const Step& a, const Step& b) {
        return a.at < b.at || (a.at == b.at && a.kind != Kind::Unplug && b.kind == Kind::Unplug);
    });
    m_position = end;
    return steps;
}
