// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/ProcessRunner.h"

#include <QString>

namespace platform {

/// Whether a device is on the bus, with a line for the log on how that was found out.
struct UsbQuery
{
    bool found = false;
    QString detail;
};

/// Looks for the USB device with the vendor and product number \a vid and \a pid, four hexadecimal digits
/// each. Any thread; on Windows it takes up to 3.5 s and runs PowerShell through \a run.
UsbQuery findUsbDevice(const QString& vid, const QString& pid, const ProcessRun& run);

} // namespace platform
