// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/**
 * Where the application keeps what belongs to its user: folders in "Quorvel" under the Documents folder.
 *
 * Each call looks the Documents folder up anew and, but for logsPath(), creates the folder with its missing
 * parents; where that fails the path is returned all the same, and opening a file in it fails. Any thread may
 * call them.
 */
namespace folders {

/// Daily log files.
QString logs();
/// The same folder, whether it exists or not.
QString logsPath();
/// The multimeter history.
QString database();
/// Curve archives.
QString curves();
/// Recordings that were given no other place.
QString recordings();

} // namespace folders
