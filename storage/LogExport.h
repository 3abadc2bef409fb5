// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/ArchiveOutcome.h"

#include <QString>

class DebugLog;

/// Packs the log folder into "Quorvel_logs.zip" on the desktop. Blocks, without an event loop, for at most
/// platform::cArchiveTimeLimitMs. Lines that are logged meanwhile are written afterwards. Returns the path of
/// the archive, or an empty text on failure, which leaves no archive; without a log folder nothing is
/// touched.
QString exportLogs(const DebugLog& log, const platform::FolderArchiver& archiver);
