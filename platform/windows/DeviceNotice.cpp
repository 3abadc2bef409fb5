// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/DeviceNotice.h"

#include "platform/DeviceChangeMessage.h"

#include <windows.h>

#include <dbt.h>

#include <cstddef>

namespace platform {

static_assert(offsetof(WindowsMessage, message) == offsetof(MSG, message), "layout of MSG");
static_assert(offsetof(WindowsMessage, wParam) == offsetof(MSG, wParam), "layout of MSG");
static_assert(offsetof(WindowsMessage, lParam) == offsetof(MSG, lParam), "layout of MSG");
static_assert(cWmDeviceChange == WM_DEVICECHANGE && cDevNodesChanged == DBT_DEVNODES_CHANGED &&
                  cDeviceArrival == DBT_DEVICEARRIVAL && cDeviceRemoveComplete == DBT_DEVICEREMOVECOMPLETE,
              "device-change codes");

struct DeviceNotice::Watch
{};

DeviceNotice::DeviceNotice(Handler) {}

DeviceNotice::~DeviceNotice() = default;

bool DeviceNotice::isActive() const
{
    return true;
}

} // namespace platform
