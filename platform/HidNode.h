// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

namespace platform {

/**
 * Why the node \a path of a device that is there could not be opened, and what its user can do about it:
 * English text of one line. Empty when the system does not forbid the opening.
 */
QString hidAccessAdvice(const QByteArray& path);

} // namespace platform
