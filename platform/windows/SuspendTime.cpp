// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/SuspendTime.h"

#include <windows.h>

namespace platform {

namespace {

/// The interrupt times count in units of 100 ns.
using InterruptTime = std::chrono::duration<long long, std::ratio<1, 10000000>>;

} // namespace

std::chrono::microseconds suspendTime()
{
    ULONGLONG running = 0;
    if (::QueryUnbiasedInterruptTime(&running) == 0)
        return {};
    // GetTickCount64 goes on while the system sleeps; its step is at most 16 ms.
    const std::chrono::milliseconds all(static_cast<long long>(::GetTickCount64()));
    return std::chrono::duration_cast<std::chrono::microseconds>(
        all - InterruptTime(static_cast<long long>(running)));
}

bool steadyClockCountsSuspension()
{
    // The performance counter, which the steady clock reads, goes on.
    return true;
}

} // namespace platform
