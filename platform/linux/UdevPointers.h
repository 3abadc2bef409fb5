// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <libudev.h>

#include <memory>

namespace platform {

/// Gives a libudev object back with the function that its kind wants.
template <auto Unref>
struct UdevRelease
{
    template <class Object>
    void operator()(Object* object) const
    {
        Unref(object);
    }
};

using UdevContext = std::unique_ptr<udev, UdevRelease<udev_unref>>;
using UdevMonitor = std::unique_ptr<udev_monitor, UdevRelease<udev_monitor_unref>>;
using UdevDevice = std::unique_ptr<udev_device, UdevRelease<udev_device_unref>>;
using UdevEnumerate = std::unique_ptr<udev_enumerate, UdevRelease<udev_enumerate_unref>>;

} // namespace platform
