// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/ProcessRunner.h"

#include <QString>

namespace platform {

/// Result of a search for a device on the bus.
struct UsbQuery
{
    bool found = false;
    /// Details of the search, for the log.
    QString detail;
    /// False when the system gave no answer. The device may then be present although it was not found.
    bool answered = true;
    /// The query was not finished, for example because it was too slow: another one may have an answer.
    bool failed = false;
};

/// Looks for the USB device with the vendor and product number \a vid and \a pid, four hexadecimal digits
/// each. Any thread may call it. On Windows it takes up to 3.5 s and runs PowerShell through \a run.
UsbQuery findUsbDevice(const QString& vid, const QString& pid, const ProcessRun& run);

} // namespace platform
