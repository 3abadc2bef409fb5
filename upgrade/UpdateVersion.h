// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/**
 * Whether the dotted version \a latest is newer than \a current.
 *
 * Parts are compared as numbers from the left; a missing part and one that is not a decimal integer count
 * as 0, so "1.1.10" is newer than "1.1.4" and "1.1.4.0" is not.
 */
bool isNewerVersion(const QString& current, const QString& latest);
