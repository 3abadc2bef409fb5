// SPDX-License-Identifier: GPL-3.0-or-later
#include "firmware/FlashProgress.h"
#include "platform/DeviceChangeMessage.h"
#include "system/SystemManager.h"

#include <QDebug>
#include <QtConcurrent>

namespace {

const auto cFelVendorId = QStringLiteral("1F3A");
const auto cFelProductId = QStringLiteral("EFE8");
/// What the flash tool's answer starts with when a controller in boot mode answers it.
const auto cFelAnswer = QStringLiteral("AWUSBFEX");

constexpr int cFelStartTimeoutMs = 800;
constexpr int cFelFinishTimeoutMs = 1200;
constexpr int cFelKillGraceMs = 300;

} // namespace

bool SystemManager::nativeEventFilter(const QByteArray& eventType, void* message, long*)
{
    if (const std::optional<quint64> code = platform::deviceChangeCode(eventType, message))
        onDeviceChange(*code);
    return false;
}

void SystemManager::onDeviceChange(quint64 code)
{
    writeLog(QStringLiteral("WM_DEVICECHANGE received. wParam=%1").arg(code));
    qDebug() << "SystemManager::nativeEventFilter"
             << "enter" << platform::cWmDeviceChange;
    m_deviceChangedMeanwhile = m_connectionCheckBusy;
    requestConnectionStateRefresh(false);
}

void SystemManager::requestConnectionStateRefresh(bool force)
{
    if (m_stopping)
        return;
    if (m_connectionCheckBusy) {
        writeLog(QStringLiteral("requestConnectionStateRefresh skipped: check already in progress."));
        return;
    }
    m_connectionCheckBusy = true;
    // The controller talks to one program at a time: asking it now would disturb the one that writes.
    m_felNotAsked = m_upgradeStage != flash::cIdle;
    const auto felWhileFlashing = m_felNotAsked ? std::optional<bool>(m_felReady) : std::nullopt;
    m_presenceCheck = QtConcurrent::run([this, force, felWhileFlashing] {
        const ConnectionCheckResult result = checkConnection(force, felWhileFlashing);
        QMetaObject::invokeMethod(
            this,
            [this, result] {
                writeLog(
                    QStringLiteral("requestConnectionStateRefresh completed: usbConnected=%1 felReady=%2")
                        .arg(QString::number(int(result.usb)), QString::number(int(result.fel))));
                applyConnectionStates(result);
                m_connectionCheckBusy = false;
                // A change during the check may have come after its look at the bus.
                if (m_deviceChangedMeanwhile) {
                    m_deviceChangedMeanwhile = false;
                    requestConnectionStateRefresh(false);
                }
            },
            Qt::QueuedConnection);
    });
}

void SystemManager::updateConnectionStates(bool force)
{
    const ConnectionCheckResult result = checkConnection(force, std::nullopt);
    writeLog(QStringLiteral("updateConnectionStates: usbConnected=%1 felReady=%2")
                 .arg(QString::number(int(result.usb)), QString::number(int(result.fel))));
    applyConnectionStates(result);
}

SystemManager::ConnectionCheckResult SystemManager::checkConnection(bool force,
                                                                    std::optional<bool> felWhileFlashing)
{
    ConnectionCheckResult result;
    result.force = force;
    result.usb = checkUsbDevice(cFelVendorId, cFelProductId);
    result.fel = result.usb && (felWhileFlashing ? *felWhileFlashing : checkFelDevice());
    return result;
}

void SystemManager::applyConnectionStates(const ConnectionCheckResult& result)
{
    if (result.force || result.usb != m_usbConnected) {
        m_usbConnected = result.usb;
        writeLog(QStringLiteral("usbConnectedChanged emitted. newValue=%1").arg(int(result.usb)));
        Q_EMIT usbConnectedChanged();
    }
    if (result.force || result.fel != m_felReady) {
        m_felReady = result.fel;
        writeLog(QStringLiteral("felReadyChanged emitted. newValue=%1").arg(int(result.fel)));
        Q_EMIT felReadyChanged();
    }
}

bool SystemManager::checkUsbDevice(const QString& vid, const QString& pid)
{
    const platform::UsbQuery query = m_services.findUsbDevice(vid, pid, processRun());
    writeLog(QStringLiteral("checkUsbDevice(vid,pid) PowerShell result=%1 detail=%2")
                 .arg(QString::number(int(query.found)), query.detail));
    return query.found;
}

bool SystemManager::checkFelDevice()
{
    using End = platform::ProcessOutcome::End;
    platform::ProcessRequest request;
    request.program = m_services.flashToolPath();
    request.arguments = QStringList{QStringLiteral("version")};
    request.startTimeoutMs = cFelStartTimeoutMs;
    request.finishTimeoutMs = cFelFinishTimeoutMs;
    request.killGraceMs = cFelKillGraceMs;
    request.cancelled = &m_stopping;
    const platform::ProcessOutcome outcome = platform::runProcess(request);
    if (outcome.end == End::NotStarted) {
        writeLog(QStringLiteral("checkFelDevice: failed to start program=%1").arg(request.program));
        return false;
    }
    if (outcome.end == End::TimedOut || outcome.end == End::Cancelled) {
        writeLog(QStringLiteral("checkFelDevice: timeout program=%1").arg(request.program));
        return false;
    }
    const QString output = QString::fromUtf8(outcome.standardOutput);
    writeLog(QStringLiteral("checkFelDevice: program=%1 exitCode=%2 output=%3")
                 .arg(request.program, QString::number(outcome.exitCode), output.simplified()));
    return output.contains(cFelAnswer);
}
