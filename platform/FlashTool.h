// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace platform {

/// Returns the absolute path of the flash tool "sunxi-fel" in the folder "plugins/sunxi-tools" beside the
/// executable. On Linux the tool on PATH is used when that folder has none. Without any tool the result is
/// the path in that folder: starting it fails, and the error names the missing file.
QString flashToolPath();

} // namespace platform
