// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace platform {

/**
 * Why the node \a path of a device that is there could not be opened, and what its user can do about it:
 * English text of one line. Empty when the system does not forbid the opening.
 */
QString hidAccessAdvice(const QByteArray& path);

/// Returns the names of the other programs of this user that have the node \a path open, without repetition;
/// empty where the system does not say.
QStringList hidNodeUsers(const QByteArray& path);

} // namespace platform
