// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace platform {

/// Whether the controller's boot mode needs a driver here that this application can install and remove.
/// True on Windows. On Linux the kernel's own access is enough; a udev rule opens it to the user.
bool bootModeDriverSupported();

} // namespace platform
