// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

#include <cstddef>

struct hid_device_;

namespace platform {

/**
 * Reads the report descriptor of the open \a device, whose node is \a path, into \a buffer.
 *
 * The number of bytes, at most \a size; negative when it cannot be read.
 */
int hidReportDescriptor(hid_device_* device, const QByteArray& path, unsigned char* buffer, size_t size);

/**
 * Why the node \a path of a device that is there could not be opened, and what its user can do about it:
 * English text of one line. Empty when the system does not forbid the opening.
 */
QString hidAccessAdvice(const QByteArray& path);

} // namespace platform
