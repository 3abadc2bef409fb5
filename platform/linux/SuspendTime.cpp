// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/SuspendTime.h"

#include <ctime>

namespace platform {

namespace {

std::chrono::nanoseconds clockTime(clockid_t clock)
{
    timespec time{};
    if (::clock_gettime(clock, &time) != 0)
        return {};
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

} // namespace

std::chrono::microseconds suspendTime()
{
    const std::chrono::nanoseconds running = clockTime(CLOCK_MONOTONIC);
    return std::chrono::duration_cast<std::chrono::microseconds>(clockTime(CLOCK_BOOTTIME) - running);
}

bool steadyClockCountsSuspension()
{
    return false;
}

} // namespace platform
