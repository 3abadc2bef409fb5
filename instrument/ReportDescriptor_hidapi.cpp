// SPDX-License-Identifier: GPL-3.0-or-later
#include "instrument/ReportDescriptor.h"

#include <hidapi.h>

int hidReportDescriptor(hid_device_* device, const QByteArray& path, unsigned char* buffer, size_t size)
{
    Q_UNUSED(path)
    return hid_get_report_descriptor(device, buffer, size);
}
