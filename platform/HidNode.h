// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace platform {

/**
 * Returns why the node \a path of a present device could not be opened, and what the user can do: one line of
 * English text. Empty when the system permits the access.
 */
QString hidAccessAdvice(const QByteArray& path);

/// Returns the names of the other programs of this user that have the node \a path open, without repetition;
/// empty where the system does not say.
QStringList hidNodeUsers(const QByteArray& path);

} // namespace platform
