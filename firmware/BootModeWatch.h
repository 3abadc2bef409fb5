// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/DeviceNotice.h"
#include "platform/UsbInventory.h"
#include "storage/DebugLog.h"

#include <QObject>
#include <QThreadPool>
#include <QTimer>

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>

/// What the watch asks of the operating system.
struct BootModeServices
{
    std::function<platform::UsbQuery(const QString& vid, const QString& pid, const platform::ProcessRun& run)>
        findUsbDevice = platform::findUsbDevice;
    std::function<QString()> flashToolPath;
};

/// Times of the watch in milliseconds.
struct BootModeTimings
{
    int firstCheckMs = 1500;
    /// The bus has settled when nothing has changed for so long.
    int settleMs = 500;
};

/**
 * Watches for the controller in boot mode (USB device 1F3A:EFE8) and whether it answers the flash tool.
 *
 * A change on the bus starts a check at once, and one more when the bus has settled. Checks run on a thread
 * of their own, one at a time. The controller serves one program only: exactly one flash tool asks it at any
 * moment, and none while a Claim exists. Lives on the GUI thread.
 */
class BootModeWatch : public QObject
{
    Q_OBJECT

public:
    /// Reserves the controller: while it exists, only checkNow() asks it, and its last answer counts as long
    /// as it is on the bus. At its end, a controller that appeared meanwhile is asked. One at a time; the
    /// watch outlives it.
    class Claim
    {
    public:
        explicit Claim(BootModeWatch& watch);
        ~Claim();
        Q_DISABLE_COPY(Claim)

    private:
        BootModeWatch& m_watch;
    };

    BootModeWatch(BootModeServices services, const BootModeTimings& timings, DebugLog log,
                  QObject* parent = nullptr);
    ~BootModeWatch() override;

    /// Whether the controller is on the bus.
    bool usbConnected() const { return m_usbConnected; }
    /// Whether it also answers the flash tool.
    bool felReady() const { return m_felReady; }

    /// Begins to watch; the first check emits both change signals, whatever it finds.
    void start();
    /// Ends a running check and waits for it. Nothing starts afterwards.
    void stop();

    /// The system reports changes of the bus, oldest first.
    void onDeviceChanges(const std::vector<platform::DeviceChange>& changes);
    /// Starts a check unless one runs. \a force emits both change signals in any case.
    void requestCheck(bool force);
    /// Checks within this call, which blocks for up to 5.8 s. Waits for a tool that asks the controller.
    void checkNow(bool force);

Q_SIGNALS:
    void usbConnectedChanged();
    void felReadyChanged();
    /// A check during a Claim did not find the controller on the bus, and the system's answer is certain.
    void controllerGone();

private:
    enum class Asker { Check, ClaimOwner };
    struct Finding
    {
        bool usb = false;
        bool fel = false;
        /// Whether the system answered at all.
        bool certain = false;
        /// The query of the bus was not finished.
        bool failed = false;
        /// Whether the controller was asked.
        bool asked = false;
    };

    /// Looks at the bus and asks the controller. Any thread.
    Finding look(Asker asker);
    bool askController() const;
    void onChecked(bool force, Finding finding);
    void apply(bool force, bool usb, bool fel);
    void onSettled();
    void release();
    /// Whether another check follows the one with \a finding, because its query was not finished.
    bool retries(const Finding& finding);

    const BootModeServices m_services;
    const BootModeTimings m_timings;
    const DebugLog m_log;
    /// Ends checks; read by their thread.
    std::atomic_bool m_stopping{false};
    /// Whether a Claim exists; read by the thread of the checks, with m_controller locked.
    std::atomic_bool m_claimed{false};
    /// Locked while a flash tool asks the controller.
    std::mutex m_controller;

    bool m_usbConnected = false;
    bool m_felReady = false;
    bool m_busy = false;
    /// The controller left during the running check, which may still have seen it.
    bool m_leftMeanwhile = false;
    /// The bus settled during the running check.
    bool m_checkAgain = false;
    /// A check did not ask the controller because of a Claim.
    bool m_notAsked = false;
    /// Checks in a row whose query was not finished.
    int m_failures = 0;
    QTimer m_settled;
    std::unique_ptr<platform::DeviceNotice> m_notice;
    QThreadPool m_thread;
};
