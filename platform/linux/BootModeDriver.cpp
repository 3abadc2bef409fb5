// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/BootModeDriver.h"

bool platform::bootModeDriverSupported()
{
    return false;
}
