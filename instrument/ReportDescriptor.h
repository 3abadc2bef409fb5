// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>

#include <cstddef>

struct hid_device_;

/**
 * Reads the report descriptor of the open \a device, whose node is \a path, into \a buffer.
 *
 * Returns the number of bytes, at most \a size; negative when the descriptor cannot be read.
 */
int hidReportDescriptor(hid_device_* device, const QByteArray& path, unsigned char* buffer, size_t size);
