// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/ProcessRunner.h"

#include <QString>

#include <functional>

namespace platform {

/// How long packing may block: as long as the start of the Windows archiver, its run and its end together.
constexpr int cArchiveTimeLimitMs = 3500;

/// Result of packing a folder, from archiveFolder(). The texts are for the log.
struct ArchiveOutcome
{
    /// Whether the archiver ran to its end.
    bool ran = false;
    /// 0 when the archiver reports success, else its code; -1 when it did not end by itself.
    int exitCode = -1;
    /// Whether the archive holds every file of the folder.
    bool complete = false;
    QString standardOutput;
    QString standardError;
};

/// archiveFolder() or a replacement for it.
using FolderArchiver = std::function<ArchiveOutcome(const QString& folder, const QString& archive,
                                                    const ProcessRun& run, int timeLimitMs)>;

} // namespace platform
