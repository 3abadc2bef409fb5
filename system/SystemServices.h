// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "firmware/BootModeWatch.h"
#include "firmware/FirmwareServer.h"
#include "firmware/FirmwareUpgrade.h"
#include "platform/BootModeDriver.h"
#include "platform/FlashTool.h"
#include "platform/LogArchive.h"

/// What the system manager asks of the operating system: by default the services of this platform.
struct SystemServices
{
    BootModeServices bootMode{platform::findUsbDevice, platform::flashToolPath};
    platform::FolderArchiver archiveFolder = platform::archiveFolder;
    /// Whether the boot-mode driver can be installed and removed with PowerShell here.
    bool driverJobs = platform::bootModeDriverSupported();
};

/// Periods, limits and pauses of the system manager.
struct SystemTimings
{
    ServerTimings server;
    BootModeTimings bootMode;
    UpgradeTimings upgrade;
};
