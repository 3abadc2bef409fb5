// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/UsbInventory.h"

#include "platform/linux/UdevPointers.h"

#include <string>

platform::UsbQuery platform::findUsbDevice(const QString& vid, const QString& pid, const ProcessRun&)
{
    UsbQuery query;
    // The context is local, because threads must not share libudev objects.
    const UdevContext context{udev_new()};
    const UdevEnumerate devices{context ? udev_enumerate_new(context.get()) : nullptr};
    if (!devices) {
        query.detail = QStringLiteral("udev is not available");
        query.answered = false;
        return query;
    }
    // The kernel writes these attributes in lower case.
    const std::string vendor = vid.toLower().toStdString();
    const std::string product = pid.toLower().toStdString();
    udev_enumerate_add_match_subsystem(devices.get(), "usb");
    udev_enumerate_add_match_sysattr(devices.get(), "idVendor", vendor.c_str());
    udev_enumerate_add_match_sysattr(devices.get(), "idProduct", product.c_str());
    const int scan = udev_enumerate_scan_devices(devices.get());
    const udev_list_entry* first = scan < 0 ? nullptr : udev_enumerate_get_list_entry(devices.get());
    query.found = first != nullptr;
    query.answered = scan >= 0;
    const char* path = query.found ? udev_list_entry_get_name(const_cast<udev_list_entry*>(first)) : "";
    query.detail =
        QStringLiteral("udev scan=%1 device=%2 path=%3")
            .arg(QString::number(scan), vid + QLatin1Char(':') + pid, QString::fromLocal8Bit(path));
    return query;
}
