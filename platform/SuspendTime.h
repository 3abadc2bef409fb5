// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>

namespace platform {

/**
 * Returns how long the system has been suspended since it was started.
 *
 * Any thread may call it; a call takes less than a microsecond. Where the system does not know, the result is
 * always 0.
 */
std::chrono::microseconds suspendTime();

/// Returns true when std::chrono::steady_clock goes on while the system is suspended.
bool steadyClockCountsSuspension();

} // namespace platform
