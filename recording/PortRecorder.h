// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "instrument/InstrumentPort.h"
#include "instrument/PacketCodec.h"
#include "instrument/ReadingGate.h"

#include <QObject>

class Recorder;

/**
 * Hands every packet of an instrument's port to a recorder, in order, and a gap when the port closes. Lives
 * on the thread of both, which must outlive it. Does nothing while the recorder does not record.
 */
class PortRecorder : public QObject
{
    Q_OBJECT

public:
    PortRecorder(InstrumentPort& port, Recorder& recorder, QObject* parent = nullptr);

private:
    void onStarted();
    void onPacket(const InstrumentPacket& packet);
    void onStateChanged(InstrumentPort::State state);

    InstrumentPort& m_port;
    Recorder& m_recorder;
    /// Decides which multimeter readings are recorded.
    ReadingGate m_gate;
    /// The instrument sends it only now and then, so it is kept for the next recording.
    protocol::DeviceInfo m_identity;
};
