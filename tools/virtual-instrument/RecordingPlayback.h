// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "instrument/PacketCodec.h"
#include "recording/RecordingReader.h"

#include <QByteArray>

#include <vector>

/// Plays a recording back as the packets that the instrument sent, at their distances. Time passes only in
/// advance(). Memory does not grow with the recording.
class RecordingPlayback
{
public:
    enum class Kind { Packet, Unplug, Plug };
    struct Step
    {
        recording::Time at{};
        Kind kind = Kind::Packet;
        QByteArray packet; ///< with Kind::Packet
    };

    /// Opens the recording \a path. Returns the failure, or none.
    recording::Error open(const QString& path);

    protocol::DeviceInfo deviceInfo() const { return {m_info.deviceId, m_info.deviceVersion}; }

    /// Advances the time by \a passed. Returns what happened meanwhile, in order. The instrument is unplugged
    /// in gaps in which it was, and sends nothing in the others.
    std::vector<Step> advance(recording::Time passed);

    /// Returns true when all of the recording has been played.
    bool isAtEnd() const { return m_position > m_info.duration; }

private:
    RecordingReader m_reader;
    recording::Info m_info;
    /// Unplugging, multimeter readings and screen changes, in order of time.
    std::vector<Step> m_events;
    size_t m_nextEvent = 0;
    recording::Time m_position{0};
};
