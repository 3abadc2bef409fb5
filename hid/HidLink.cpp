// SPDX-License-Identifier: GPL-3.0-or-later
#include "hid/HidLink.h"

#include <hidapi.h>

#include <QDateTime>

namespace {

constexpr int cPollIntervalMs = 500;
constexpr int cStartDelayMs = 1500;
constexpr int cFirstOpenDelayMs = 300;
/// Poll ticks between two silent attempts to open a device.
constexpr int cTicksPerAttempt = 5;
constexpr qint64 cSilenceLimitMs = 10000;

} // namespace

HidLink::HidLink(GenApplication* app, GenToolbox* toolbox, std::shared_ptr<SettingsFile> settings)
    : GenTool(app, toolbox), m_settings(std::move(settings)), m_clock(&QDateTime::currentMSecsSinceEpoch)
{
    if (isHistoryPersistenceEnabled())
        loadMultimeterHistory();
    m_pollTimer.setInterval(cPollIntervalMs);
    connect(&m_pollTimer, &QTimer::timeout, this, &HidLink::pollDevice);
    QTimer::singleShot(cStartDelayMs, this, &HidLink::startUp);
}

HidLink::~HidLink()
{
    m_shuttingDown = true;
    m_pollTimer.stop();
    closeDevice();
    if (m_hidInitialized) {
        hid_exit();
        m_hidInitialized = false;
    }
}

void HidLink::setToolbox(GenToolbox* toolbox)
{
    GenTool::setToolbox(toolbox);
    publishToQml(this, "GenTool.HidLink", "HidLink");
}

void HidLink::startUp()
{
    if (m_shuttingDown || !ensureHidInitialized())
        return;
    m_pollTimer.start();
    QTimer::singleShot(cFirstOpenDelayMs, this, [this] {
        if (!m_shuttingDown && ensureHidInitialized())
            tryOpenDevice(true);
    });
}

bool HidLink::openDevice()
{
    return !m_shuttingDown && ensureHidInitialized() && tryOpenDevice(true);
}

void HidLink::closeDevice()
{
    stopReadThread();
    if (m_device) {
        const QMutexLocker lock(&m_deviceMutex);
        m_device.reset();
    }
    if (m_connected) {
        m_connected = false;
        Q_EMIT devicesStatusChanged();
    }
    resetLiveState();
    Q_EMIT deviceInfoChanged();
    Q_EMIT measurementChanged();
    Q_EMIT multimeterChanged();
    Q_EMIT multimeterCurrentTableChanged();
    Q_EMIT deviceLogChanged();
    Q_EMIT packetTraceChanged();
}

void HidLink::resetLiveState()
{
    m_deviceId.clear();
    m_deviceVersion.clear();
    m_measurement = {};
    resetMultimeter();
    m_lastDeviceLog.clear();
    m_lastRxPacket.reset();
    m_lastTxPacket.reset();
}

void HidLink::pollDevice()
{
    if (m_shuttingDown)
        return;
    if (!m_device) {
        if (!m_readThread && ++m_openAttemptCounter >= cTicksPerAttempt) {
            m_openAttemptCounter = 0;
            tryOpenDevice(false);
        }
        return;
    }
    if (!m_packetSinceOpen && m_openedAtMs >= 1 && m_clock() - m_openedAtMs > cSilenceLimitMs) {
        logLine(QStringLiteral("No HID packet received within 10 seconds after open. Reopening device."));
        closeDevice();
        tryOpenDevice(false);
    }
}

void HidLink::handleReadError(const QString& message)
{
    Q_EMIT errorOccurred(message);
    closeDevice();
}
