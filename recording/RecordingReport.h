// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "recording/RecordingError.h"

#include <QString>

/**
 * A recording as one HTML file that needs no network: device, times, gaps, statistics, charge and energy, and
 * charts that can be zoomed. Texts are in the language of the application, which must be set up before.
 */
namespace report {

/**
 * Writes the report of the recording \a path into the file \a target, which is replaced. Any thread may call
 * it; it blocks for about as long as the summaries of the recording take to read. The recording may still be
 * running.
 *
 * Returns the failure, or none. After a failure \a target is as it was.
 */
recording::Error write(const QString& path, const QString& target);

/// Returns where the report of the recording \a path is put when the user names no file: beside it.
QString defaultTarget(const QString& path);

} // namespace report
