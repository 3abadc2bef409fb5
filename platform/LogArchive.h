// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/ArchiveOutcome.h"

namespace platform {

/// Packs every file of \a folder into the zip file \a archive, which must not exist. Any thread may call it;
/// no event loop runs. On Windows \a run starts the archiver and limits its time. On Linux packing fails
/// after \a timeLimitMs. After a failure a partial archive may remain on Windows, but not on Linux.
ArchiveOutcome archiveFolder(const QString& folder, const QString& archive, const ProcessRun& run,
                             int timeLimitMs);

} // namespace platform
