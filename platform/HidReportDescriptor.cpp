// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/HidNode.h"

#include <hidapi.h>

namespace platform {

int hidReportDescriptor(hid_device_* device, const QByteArray& path, unsigned char* buffer, size_t size)
{
    Q_UNUSED(path)
    return hid_get_report_descriptor(device, buffer, size);
}

} // namespace platform
