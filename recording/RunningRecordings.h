// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "recording/RecordingError.h"

#include <QLockFile>
#include <QString>
#include <QStringList>

#include <memory>

/**
 * Which recordings of this user are running, in whatever program, and which were interrupted by its end. Any
 * thread may call these functions.
 */
namespace running {

/// Locks the recording \a path for one writer. Returns null and sets \a error on failure: Busy when another
/// program has it. The lock of a program that has ended does not count.
std::unique_ptr<QLockFile> lock(const QString& path, recording::Error& error);

/// Returns true when a program is writing to the recording \a path.
bool isLocked(const QString& path);

/// Adds the recording \a path to the list of recordings that have not been finished. Returns false on
/// failure.
bool announce(const QString& path);
/// Removes \a path from that list.
void withdraw(const QString& path);

/// Returns the absolute paths of the recordings that a program is writing now, oldest first.
QStringList current();
/// Returns the absolute paths of the recordings that were interrupted, whose file still exists, oldest first.
QStringList interrupted();

} // namespace running
