// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/ProcessRunner.h"

#include <QString>

#include <functional>

namespace platform {

/// Time limit of packing: the start of the Windows archiver, its run and its end together.
constexpr int cArchiveTimeLimitMs = 3500;

/// Result of packing a folder, from archiveFolder(). The texts are for the log.
struct ArchiveOutcome
{
    /// True when the archiver ended by itself.
    bool ran = false;
    /// Exit code of the archiver, 0 for success; -1 when it did not end by itself.
    int exitCode = -1;
    /// True when the archive holds every file of the folder.
    bool complete = false;
    QString standardOutput;
    QString standardError;
};

/// Type of archiveFolder() and of its replacements.
using FolderArchiver = std::function<ArchiveOutcome(const QString& folder, const QString& archive,
                                                    const ProcessRun& run, int timeLimitMs)>;

} // namespace platform
