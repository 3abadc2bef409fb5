// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace platform {

/// Result of packing a folder, from archiveFolder(). The texts are for the log.
struct ArchiveOutcome
{
    /// Whether the archiver ran to its end.
    bool ran = false;
    /// 0 when the archive is complete, else the archiver's code; -1 when it did not end by itself.
    int exitCode = -1;
    QString standardOutput;
    QString standardError;
};

} // namespace platform
