// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/ArchiveOutcome.h"

namespace platform {

/// Packs every file of \a folder into the zip file \a archive, which must not exist. Any thread, no event
/// loop. \a run starts programs and bounds them; packing within this process fails after \a timeLimitMs. On
/// failure a partial file may remain under the name of the archive on Windows only, never on Linux.
ArchiveOutcome archiveFolder(const QString& folder, const QString& archive, const ProcessRun& run,
                             int timeLimitMs);

} // namespace platform
