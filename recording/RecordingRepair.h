// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "recording/RecordingError.h"

#include <QString>
#include <QStringList>

/// What can be done with recordings after they were made. Any thread may call these functions; they block
/// while they read and write.
namespace repair {

/**
 * Finishes the recording \a path, whose program ended without doing so. Everything that had been written
 * stays. A recording that is finished already is left as it is.
 *
 * Returns the failure: Busy while a program records into it, Damaged when the content is inconsistent.
 */
recording::Error recover(const QString& path);

/**
 * Adds a mark to the recording \a path at this moment, while another program records into it. The recorder
 * gives it its time within a second. Returns the failure, or none.
 */
recording::Error addMark(const QString& path, const QString& text);

/**
 * Writes the recordings \a paths one after the other, in the order of their starts, into the new file
 * \a target. The time between them becomes gaps with the reason Merged. \a program is kept as the name of the
 * program. Returns the failure, or none; \a target does not exist after a failure.
 */
recording::Error merge(const QStringList& paths, const QString& target, const QString& program);

} // namespace repair
