// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace platform {

/// Returns true when this system needs a driver for the boot mode, which this application can install and
/// remove. That is the case on Windows. On Linux a udev rule gives the user access.
bool bootModeDriverSupported();

} // namespace platform
