// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace platform {

/// The flash tool "sunxi-fel": the one in the folder "plugins/sunxi-tools" beside the executable; on Linux,
/// where that folder may hold none, else the one on PATH. The path is absolute, and that of the shipped
/// place when there is no tool at all: starting it then fails and names where one is missing.
QString flashToolPath();

} // namespace platform
