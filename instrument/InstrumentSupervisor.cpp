// SPDX-License-Identifier: GPL-3.0-or-later
#include "instrument/InstrumentSupervisor.h"

InstrumentSupervisor::InstrumentSupervisor(Log log, Clock clock)
    : m_log(std::move(log)), m_clock(std::move(clock)), m_discovery(m_log), m_port(m_log)
{
    m_pollTimer.setInterval(cPollInterval);
    connect(&m_pollTimer, &QTimer::timeout, this, &InstrumentSupervisor::poll);
    connect(&m_port, &InstrumentPort::packetReceived, this, [this] { m_packetSinceOpen = true; });
}

void InstrumentSupervisor::start()
{
    QTimer::singleShot(cStartDelay, this, [this] {
        if (!m_discovery.ensureHidInitialized())
            return;
        m_pollTimer.start();
        QTimer::singleShot(cFirstOpenDelay, this, [this] { tryOpenDevice(true); });
    });
}

bool InstrumentSupervisor::tryOpenDevice(bool reportFailure)
{
    if (m_port.isOpen())
        return true;
    if (m_port.state() == InstrumentPort::State::Closing || !m_discovery.ensureHidInitialized())
        return false;
    InstrumentDiscovery::Found found = m_discovery.find(reportFailure);
    if (!found.device) {
        if (reportFailure)
            Q_EMIT openFailed(QStringLiteral("Failed to open HID device: VID=0x%1 PID=0x%2")
                                  .arg(InstrumentDiscovery::cVendorId, 4, 16, QLatin1Char('0'))
                                  .arg(InstrumentDiscovery::cProductId, 4, 16, QLatin1Char('0')));
        return false;
    }
    m_pollsWithoutDevice = 0;
    m_openedAt = m_clock();
    m_packetSinceOpen = false;
    return m_port.open(std::move(found.device), found.firstPacket);
}

void InstrumentSupervisor::poll()
{
    if (!m_port.isOpen()) {
        if (++m_pollsWithoutDevice * cPollInterval >= cAttemptInterval) {
            m_pollsWithoutDevice = 0;
            tryOpenDevice(false);
        }
        return;
    }
    if (m_packetSinceOpen || m_clock() - m_openedAt <= cSilenceBeforeReopening)
        return;
    if (m_log)
        m_log(QStringLiteral("No HID packet received within 10 seconds after open. Reopening device."));
    m_port.close();
    tryOpenDevice(false);
}
