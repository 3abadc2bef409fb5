// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/BootModeDriver.h"
#include "platform/FlashTool.h"
#include "platform/LogArchive.h"
#include "platform/ProcessRunner.h"
#include "platform/UsbInventory.h"

#include <QString>

#include <atomic>
#include <functional>

/// What the system manager asks of the operating system: by default the services of this platform.
struct SystemServices
{
    std::function<platform::UsbQuery(const QString& vid, const QString& pid, const platform::ProcessRun& run)>
        findUsbDevice = platform::findUsbDevice;
    std::function<platform::ArchiveOutcome(const QString& folder, const QString& archive,
                                           const platform::ProcessRun& run,
                                           const std::atomic_bool& cancelled)>
        archiveFolder = platform::archiveFolder;
    std::function<QString()> flashToolPath = platform::flashToolPath;
    /// Whether the boot-mode driver can be installed and removed with PowerShell here.
    bool driverJobs = platform::bootModeDriverSupported();
};

/// Periods, limits and pauses of the system manager in milliseconds.
struct SystemTimings
{
    int statusPeriodMs = 10000;
    /// Limit of a whole status check, below its period: the state is right again one period after a recovery.
    int statusTimeoutMs = 8000;
    int catalogueStallMs = 8000;
    int catalogueTimeoutMs = 30000;
    int downloadStallMs = 15000;
    /// Limit of one file, against a server that never quite stops sending.
    int downloadTimeoutMs = 15 * 60 * 1000;
    int firstPresenceCheckMs = 1500;
    int pauseBeforeDownloadsMs = 1000;
    int pauseAfterFlashingMs = 2000;
    /// A flash tool that prints nothing for so long is ended.
    int flashSilenceMs = 60000;
};
