// SPDX-License-Identifier: GPL-3.0-or-later
#include "Crash.h"

#include <cstdlib>

#include <windows.h>

void crash()
{
    // The code that Windows gives a process that reached for memory that is not its own.
    TerminateProcess(GetCurrentProcess(), UINT(STATUS_ACCESS_VIOLATION));
    std::abort();
}
