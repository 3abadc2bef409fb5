// SPDX-License-Identifier: GPL-3.0-or-later
#include "firmware/BootModeWatch.h"

#include "platform/DeviceChangeMessage.h"
#include "platform/ProcessRunner.h"

#include <QCoreApplication>

#include <algorithm>
#include <utility>

namespace {

const auto cVendorId = QStringLiteral("1F3A");
const auto cProductId = QStringLiteral("EFE8");
/// Part of the flash tool's answer when the controller answers it.
const auto cFelAnswer = QStringLiteral("AWUSBFEX");

/// How often a query that was not finished is repeated. The first PowerShell after the system's start may
/// need longer than its limit, and no change of the bus would cause another check.
constexpr int cQueryRetries = 3;
constexpr int cFelStartTimeoutMs = 800;
constexpr int cFelFinishTimeoutMs = 1200;
constexpr int cFelKillGraceMs = 300;

/// Whether the last thing that happened to the controller is that it left the bus.
bool controllerLeft(const std::vector<platform::DeviceChange>& changes)
{
    const auto last =
        std::find_if(changes.crbegin(), changes.crend(), [](const platform::DeviceChange& change) {
            return change.vid == cVendorId && change.pid == cProductId;
        });
    return last != changes.crend() && last->code == platform::cDeviceRemoveComplete;
}

} // namespace

BootModeWatch::Claim::Claim(BootModeWatch& watch) : m_watch(watch)
{
    m_watch.m_claimed = true;
}

BootModeWatch::Claim::~Claim()
{
    m_watch.release();
}

BootModeWatch::BootModeWatch(BootModeServices services, const BootModeTimings& timings, DebugLog log,
                             QObject* parent)
    : QObject(parent), m_services(std::move(services)), m_timings(timings), m_log(std::move(log))
{
    m_thread.setMaxThreadCount(1);
    m_settled.setSingleShot(true);
    m_settled.setInterval(m_timings.settleMs);
    connect(&m_settled, &QTimer::timeout, this, &BootModeWatch::onSettled);
}

BootModeWatch::~BootModeWatch()
{
    stop();
}

void BootModeWatch::start()
{
    m_notice = std::make_unique<platform::DeviceNotice>(
        [this](const std::vector<platform::DeviceChange>& changes) { onDeviceChanges(changes); });
    if (!m_notice->isActive())
        m_log.write(QStringLiteral("Device changes are not reported by this system."));
    QTimer::singleShot(m_timings.firstCheckMs, this, [this] { requestCheck(true); });
}

void BootModeWatch::stop()
{
    m_stopping = true;
    m_notice.reset();
    m_settled.stop();
    m_thread.waitForDone();
    // The result that the check has posted.
    QCoreApplication::sendPostedEvents(this, QEvent::MetaCall);
}

void BootModeWatch::onDeviceChanges(const std::vector<platform::DeviceChange>& changes)
{
    m_log.write(QStringLiteral("WM_DEVICECHANGE received. wParam=%1").arg(changes.back().code));
    if (m_stopping)
        return;
    m_settled.start();
    if (controllerLeft(changes)) {
        // The system reports a removal before it has forgotten the device: a check now might still find it.
        m_leftMeanwhile = m_busy;
        apply(false, false, false);
    } else {
        m_leftMeanwhile = false;
        requestCheck(false);
    }
}

void BootModeWatch::onSettled()
{
    m_checkAgain = m_busy;
    if (!m_busy)
        requestCheck(false);
}

void BootModeWatch::requestCheck(bool force)
{
    if (m_stopping)
        return;
    if (m_busy) {
        m_log.write(QStringLiteral("requestConnectionStateRefresh skipped: check already in progress."));
        return;
    }
    m_busy = true;
    m_leftMeanwhile = false;
    m_thread.start([this, force] {
        const Finding finding = look(Asker::Check);
        QMetaObject::invokeMethod(
            this, [this, force, finding] { onChecked(force, finding); }, Qt::QueuedConnection);
    });
}

void BootModeWatch::onChecked(bool force, Finding finding)
{
    if (m_leftMeanwhile)
        finding = {};
    // What the claim's owner has heard counts, not what was heard before or not asked at all.
    if (m_claimed || !finding.asked)
        finding.fel = finding.usb && m_felReady;
    m_notAsked = m_notAsked || (finding.usb && (m_claimed || !finding.asked));
    m_log.write(QStringLiteral("requestConnectionStateRefresh completed: usbConnected=%1 felReady=%2")
                    .arg(QString::number(int(finding.usb)), QString::number(int(finding.fel))));
    apply(force, finding.usb, finding.fel);
    m_busy = false;
    if (m_claimed && finding.certain && !finding.usb)
        Q_EMIT controllerGone();
    if (retries(finding) || m_checkAgain) {
        m_checkAgain = false;
        requestCheck(false);
    }
}

bool BootModeWatch::retries(const Finding& finding)
{
    if (!finding.failed) {
        m_failures = 0;
        return false;
    }
    if (++m_failures > cQueryRetries)
        return false;
    m_log.write(QStringLiteral("The query of the USB devices was not finished. Looking again, %1 of %2.")
                    .arg(m_failures)
                    .arg(cQueryRetries));
    return true;
}

void BootModeWatch::checkNow(bool force)
{
    const Finding finding = look(Asker::ClaimOwner);
    m_log.write(QStringLiteral("updateConnectionStates: usbConnected=%1 felReady=%2")
                    .arg(QString::number(int(finding.usb)), QString::number(int(finding.fel))));
    apply(force, finding.usb, finding.fel);
}

void BootModeWatch::apply(bool force, bool usb, bool fel)
{
    if (force || usb != m_usbConnected) {
        m_usbConnected = usb;
        m_log.write(QStringLiteral("usbConnectedChanged emitted. newValue=%1").arg(int(usb)));
        Q_EMIT usbConnectedChanged();
    }
    if (force || fel != m_felReady) {
        m_felReady = fel;
        m_log.write(QStringLiteral("felReadyChanged emitted. newValue=%1").arg(int(fel)));
        Q_EMIT felReadyChanged();
    }
}

void BootModeWatch::release()
{
    m_claimed = false;
    if (!m_notAsked)
        return;
    m_notAsked = false;
    m_checkAgain = m_busy;
    if (!m_busy)
        requestCheck(false);
}

BootModeWatch::Finding BootModeWatch::look(Asker asker)
{
    const platform::UsbQuery query =
        m_services.findUsbDevice(cVendorId, cProductId, platform::processRunner(&m_stopping));
    m_log.write(QStringLiteral("checkUsbDevice(vid,pid) PowerShell result=%1 detail=%2")
                    .arg(QString::number(int(query.found)), query.detail));
    Finding finding;
    finding.usb = query.found;
    finding.certain = query.answered;
    finding.failed = query.failed;
    if (!query.found)
        return finding;
    const std::lock_guard<std::mutex> lock(m_controller);
    finding.asked = asker == Asker::ClaimOwner || !m_claimed;
    finding.fel = finding.asked && askController();
    return finding;
}

bool BootModeWatch::askController() const
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
        m_log.write(QStringLiteral("checkFelDevice: failed to start program=%1").arg(request.program));
        return false;
    }
    if (outcome.end == End::TimedOut || outcome.end == End::Cancelled) {
        m_log.write(QStringLiteral("checkFelDevice: timeout program=%1").arg(request.program));
        return false;
    }
    const QString output = QString::fromUtf8(outcome.standardOutput);
    m_log.write(QStringLiteral("checkFelDevice: program=%1 exitCode=%2 output=%3")
                    .arg(request.program, QString::number(outcome.exitCode), output.simplified()));
    return output.contains(cFelAnswer);
}
