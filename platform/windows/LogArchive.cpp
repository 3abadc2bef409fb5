// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/LogArchive.h"

#include "platform/PowerShell.h"

platform::ArchiveOutcome platform::archiveFolder(const QString& folder, const QString& archive,
                                                 const ProcessRun& run, int timeLimitMs)
{
    return powershell::archiveFolder(folder, archive, run, timeLimitMs);
}
