// SPDX-License-Identifier: GPL-3.0-or-later
#include "Crash.h"

#include <csignal>
#include <cstdlib>

void crash()
{
    std::raise(SIGKILL);
    std::abort();
}
