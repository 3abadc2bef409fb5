// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/ArchiveOutcome.h"
#include "platform/ProcessRunner.h"

#include <QString>

namespace platform {

/// Packs every file of \a folder into the zip file \a archive, which must not exist. Any thread. On
/// failure a partial file may remain under the name of the archive on Windows only, never on Linux.
/// \a run starts programs and ends them when the caller is cancelled; \a cancelled ends packing within
/// this process.
ArchiveOutcome archiveFolder(const QString& folder, const QString& archive, const ProcessRun& run,
                             const std::atomic_bool& cancelled);

} // namespace platform
