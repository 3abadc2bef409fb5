// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <hidapi.h>

#include <memory>

struct HidCloser
{
    void operator()(hid_device* device) const { hid_close(device); }
};

/// An open HID device; closed with its owner.
using HidHandle = std::unique_ptr<hid_device, HidCloser>;
