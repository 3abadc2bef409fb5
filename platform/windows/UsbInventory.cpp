// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/UsbInventory.h"

#include "platform/PowerShell.h"

platform::UsbQuery platform::findUsbDevice(const QString& vid, const QString& pid, const ProcessRun& run)
{
    return powershell::queryPnpDevice(vid, pid, run);
}
