// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/ProcessMemory.h"

std::optional<test::ProcessMemory> test::processMemory()
{
    return std::nullopt;
}
