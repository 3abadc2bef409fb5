// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "firmware/DriverJob.h"
#include "storage/DebugLog.h"

#include <QObject>
#include <QThreadPool>

#include <atomic>

/**
 * Installs and removes the boot-mode driver through an elevated PowerShell, one job at a time, on a thread of
 * its own. Lives on the GUI thread.
 */
class DriverRunner : public QObject
{
    Q_OBJECT

public:
    /// \a supported: whether this system has such a driver.
    DriverRunner(bool supported, DebugLog log, QObject* parent = nullptr);
    ~DriverRunner() override;

    /// Whether a job runs.
    bool isBusy() const { return m_busy; }
    /// Does nothing while a job runs. Otherwise ends in finished(): within this call when the job cannot
    /// begin, else after up to three minutes.
    void start(DriverJob job);
    /// Ends a running job, with its signal, and waits for it. Nothing starts afterwards.
    void stop();

Q_SIGNALS:
    void busyChanged();
    void finished(DriverJob job, const DriverJobOutcome& outcome);

private:
    void onEnded(DriverJob job, const DriverJobOutcome& outcome);

    const bool m_supported;
    const DebugLog m_log;
    /// Ends the script; read by the job's thread.
    std::atomic_bool m_stopping{false};
    bool m_busy = false;
    QThreadPool m_thread;
};
