// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/ArchiveOutcome.h"
#include "platform/ProcessRunner.h"
#include "platform/UsbInventory.h"

#include <QString>
#include <QStringList>

/// The commands that the Windows services pass to PowerShell, and the meaning of its answers. Plain Qt, so
/// they are built and tested on every platform.
namespace platform::powershell {

/// Time limit of a query or an archive run, in milliseconds.
constexpr int cQueryTimeoutMs = 2000;

inline QString program()
{
    return QStringLiteral("powershell");
}

/// Returns the arguments that run \a command.
QStringList arguments(const QString& command);

/// Returns \a text for use between apostrophes. Every character that PowerShell reads as an apostrophe is
/// doubled.
QString quoted(QString text);

/// Returns the Windows name of the USB device \a vid, \a pid (four hexadecimal digits each), for example
/// "VID_1F3A&PID_EFE8".
QString pnpKey(const QString& vid, const QString& pid);

/// Lists the identifiers of the plug-and-play devices that contain \a key.
QString deviceQuery(const QString& key);

/// Packs everything in \a folder into the zip file \a archive; both paths with native separators.
QString compressCommand(const QString& folder, const QString& archive);

/// Looks for the USB device in the device list of Windows; see platform::findUsbDevice.
UsbQuery queryPnpDevice(const QString& vid, const QString& pid, const ProcessRun& run);

/// Packs a folder with Compress-Archive within cQueryTimeoutMs; see platform::archiveFolder. Compress-Archive
/// skips a file that another program holds open, and still ends with 0. The outcome is complete only when the
/// archive lists as many files as the folder has.
ArchiveOutcome archiveFolder(const QString& folder, const QString& archive, const ProcessRun& run,
                             int timeLimitMs);

} // namespace platform::powershell
