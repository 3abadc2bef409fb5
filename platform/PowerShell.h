// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/ArchiveOutcome.h"
#include "platform/ProcessRunner.h"
#include "platform/UsbInventory.h"

#include <QString>
#include <QStringList>

/// The command texts that the Windows services hand to PowerShell, and what its answers mean. Plain Qt,
/// so it is built and tested on every platform.
namespace platform::powershell {

/// Time limit of a query or an archive run, in milliseconds.
constexpr int cQueryTimeoutMs = 2000;

inline QString program()
{
    return QStringLiteral("powershell");
}

/// The arguments that run \a command.
QStringList arguments(const QString& command);

/// Returns \a text for use between apostrophes, with every character doubled that PowerShell takes for one.
QString quoted(QString text);

/// What Windows calls the USB device \a vid, \a pid (four hexadecimal digits each): "VID_1F3A&PID_EFE8".
QString pnpKey(const QString& vid, const QString& pid);

/// Lists the identifiers of the plug-and-play devices that contain \a key.
QString deviceQuery(const QString& key);

/// Packs everything in \a folder into the zip file \a archive; both paths with native separators.
QString compressCommand(const QString& folder, const QString& archive);

/// Whether Windows lists the USB device; see platform::findUsbDevice.
UsbQuery queryPnpDevice(const QString& vid, const QString& pid, const ProcessRun& run);

/// Packs a folder with Compress-Archive within cQueryTimeoutMs; see platform::archiveFolder. Compress-Archive
/// leaves out a file that another program holds open, and ends with 0: the outcome is complete only when the
/// archive lists as many files as the folder holds.
ArchiveOutcome archiveFolder(const QString& folder, const QString& archive, const ProcessRun& run,
                             int timeLimitMs);

} // namespace platform::powershell
