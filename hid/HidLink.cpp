// SPDX-License-Identifier: GPL-3.0-or-later
#include "hid/HidLink.h"

#include <QDateTime>

HidLink::HidLink(GenApplication* app, GenToolbox* toolbox, std::shared_ptr<SettingsFile> settings)
    : GenTool(app, toolbox)
    , m_settings(std::move(settings))
    , m_clock(&QDateTime::currentMSecsSinceEpoch)
    , m_supervisor([this](const QString& line) { logLine(line); })
{
    if (isHistoryPersistenceEnabled())
        loadMultimeterHistory();
    connect(&m_supervisor, &InstrumentSupervisor::openFailed, this, &HidLink::errorOccurred);
    connect(&m_supervisor.port(), &InstrumentPort::stateChanged, this, &HidLink::onPortStateChanged);
    connect(&m_supervisor.port(), &InstrumentPort::packetReceived, this, &HidLink::onPacketReceived);
    connect(&m_supervisor.port(), &InstrumentPort::batchEnded, this, [this] { m_batch.reset(); });
    m_supervisor.start();
}

HidLink::~HidLink()
{
    closeDevice();
    if (m_multimeterRows.saveFailed())
        saveMultimeterHistory();
}

void HidLink::setToolbox(GenToolbox* toolbox)
{
    GenTool::setToolbox(toolbox);
    publishToQml(this, "GenTool.HidLink", "HidLink");
}

bool HidLink::openDevice()
{
    return m_supervisor.tryOpenDevice(true);
}

void HidLink::closeDevice()
{
    // A port that closes says so, which shows it.
    if (!m_supervisor.port().close())
        showClosed();
}

void HidLink::pollDevice()
{
    m_supervisor.poll();
}

void HidLink::onPortStateChanged(InstrumentPort::State state)
{
    switch (state) {
    case InstrumentPort::State::Open:
        m_connected = true;
        Q_EMIT devicesStatusChanged();
        return;
    case InstrumentPort::State::Failed:
        return handleReadError(m_supervisor.port().failure());
    case InstrumentPort::State::Closed:
        return showClosed();
    case InstrumentPort::State::Closing:
        return;
    }
}

void HidLink::onPacketReceived(const InstrumentPacket& packet)
{
    // A single packet is logged before it is handled, so that its line survives a crash.
    if (!m_batch && m_supervisor.port().moreFollow())
        m_batch.emplace(usbDebugEnabled());
    if (m_supervisor.port().isOpen())
        handleIncomingPacket(packet.bytes);
    else if (protocol::packetType(packet.bytes) == static_cast<int>(protocol::Type::DeviceLog))
        // The live values are about to be emptied, but the instrument's own messages are always kept.
        handleDeviceLogPacket(packet.bytes);
}

void HidLink::handleReadError(const QString& message)
{
    Q_EMIT errorOccurred(message);
    closeDevice();
}

void HidLink::showClosed()
{
    if (m_connected) {
        m_connected = false;
        Q_EMIT devicesStatusChanged();
    }
    m_deviceInfo = {};
    m_measurement = {};
    resetMultimeter();
    m_deviceLog.forgetLastLine();
    m_lastRxPacket.reset();
    m_lastTxPacket.reset();
    Q_EMIT deviceInfoChanged();
    Q_EMIT measurementChanged();
    Q_EMIT multimeterChanged();
    Q_EMIT multimeterCurrentTableChanged();
    Q_EMIT deviceLogChanged();
    Q_EMIT packetTraceChanged();
}

bool HidLink::writePacket(const QByteArray& packet)
{
    traceSent(packet);
    return m_supervisor.port().write(packet);
}
