// SPDX-License-Identifier: GPL-3.0-or-later
#include "recording/PortRecorder.h"

#include "instrument/MultimeterReading.h"
#include "recording/Recorder.h"

PortRecorder::PortRecorder(InstrumentPort& port, Recorder& recorder, QObject* parent)
    : QObject(parent), m_port(port), m_recorder(recorder)
{
    connect(&port, &InstrumentPort::packetReceived, this, &PortRecorder::onPacket);
    connect(&port, &InstrumentPort::stateChanged, this, &PortRecorder::onStateChanged);
    connect(&recorder, &Recorder::started, this, &PortRecorder::onStarted);
}

void PortRecorder::onStarted()
{
    m_gate = {};
    if (!m_identity.deviceId.isEmpty())
        m_recorder.setIdentity(m_identity);
    if (!m_port.isOpen())
        m_recorder.startGap(recording::GapReason::NotConnected);
}

void PortRecorder::onPacket(const InstrumentPacket& packet)
{
    switch (protocol::packetType(packet.bytes)) {
    case static_cast<int>(protocol::Type::Measurement):
        if (const auto measurement = protocol::decodeMeasurement(packet.bytes))
            m_recorder.addMeasurement(*measurement, packet.readAt);
        break;
    case static_cast<int>(protocol::Type::DeviceInfo):
        if (const auto info = protocol::decodeDeviceInfo(packet.bytes)) {
            const bool news =
                info->deviceId != m_identity.deviceId || info->deviceVersion != m_identity.deviceVersion;
            m_identity = *info;
            if (news)
                m_recorder.setIdentity(m_identity);
        }
        break;
    case static_cast<int>(protocol::Type::Multimeter):
        if (const auto received = protocol::decodeMultimeter(packet.bytes)) {
            const MultimeterReading reading = MultimeterReading::fromText(received->mode, received->text);
            if (m_gate.consider(reading.mode, reading.value, packet.readAt))
                m_recorder.addMultimeterReading(reading.mode, reading.value.trimmed(), packet.readAt);
        }
        break;
    case static_cast<int>(protocol::Type::UiControl):
        if (const auto control = protocol::decodeUiControl(packet.bytes);
            control && control->direction == protocol::InstrumentReport)
            m_recorder.addScreenChange(control->layer0, control->layer1, packet.readAt);
        break;
    default:
        break;
    }
}

void PortRecorder::onStateChanged(InstrumentPort::State state)
{
    using State = InstrumentPort::State;
    if (state != State::Closed && state != State::Failed)
        return;
    m_gate.reset();
    // An instrument that is silent is closed and opened again, without having been unplugged.
    const bool silent = state == State::Closed && m_recorder.silence() > recording::cLongestStep;
    m_recorder.startGap(silent ? recording::GapReason::Silence : recording::GapReason::Unplugged,
                        m_port.failure());
}
