// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/DeviceNotice.h"

#include "platform/DeviceChangeMessage.h"
#include "platform/linux/UdevPointers.h"

#include <QSocketNotifier>
#include <QStringList>

#include <cerrno>
#include <cstring>
#include <utility>

namespace platform {

struct DeviceNotice::Watch
{
    explicit Watch(Handler handler);

    /// Reads every pending event and calls the handler once.
    void drain();

    Handler handle;
    UdevContext context{udev_new()};
    UdevMonitor monitor;
    std::unique_ptr<QSocketNotifier> notifier;
};

namespace {

quint64 codeOf(udev_device* device)
{
    const char* action = udev_device_get_action(device);
    if (action != nullptr && std::strcmp(action, "add") == 0)
        return cDeviceArrival;
    if (action != nullptr && std::strcmp(action, "remove") == 0)
        return cDeviceRemoveComplete;
    return cDevNodesChanged;
}

/// Reads vendor and product number from the property "PRODUCT", for example "1f3a/efe8/2b3". The kernel sends
/// the property with every event of a USB device. After a removal the device's attributes cannot be read.
DeviceChange changeOf(udev_device* device)
{
    constexpr int cHexadecimal = 16;
    DeviceChange change;
    change.code = codeOf(device);
    const QStringList numbers =
        QString::fromLatin1(udev_device_get_property_value(device, "PRODUCT")).split(QLatin1Char('/'));
    const auto number = [&numbers](int index) {
        bool ok = false;
        const uint value = numbers.value(index).toUInt(&ok, cHexadecimal);
        return ok ? QStringLiteral("%1").arg(value, 4, cHexadecimal, QLatin1Char('0')).toUpper() : QString();
    };
    change.vid = number(0);
    change.pid = number(1);
    return change;
}

} // namespace

DeviceNotice::Watch::Watch(Handler handler) : handle(std::move(handler))
{
    if (!context)
        return;
    // The source "udev" reports after the rules have run, when the device node has its permissions.
    monitor.reset(udev_monitor_new_from_netlink(context.get(), "udev"));
    if (!monitor)
        return;
    udev_monitor_filter_add_match_subsystem_devtype(monitor.get(), "usb", "usb_device");
    if (udev_monitor_enable_receiving(monitor.get()) < 0) {
        monitor.reset();
        return;
    }
    notifier = std::make_unique<QSocketNotifier>(udev_monitor_get_fd(monitor.get()), QSocketNotifier::Read);
    QObject::connect(notifier.get(), &QSocketNotifier::activated, notifier.get(), [this] { drain(); });
}

void DeviceNotice::Watch::drain()
{
    std::vector<DeviceChange> changes;
    for (;;) {
        errno = 0;
        const UdevDevice device{udev_monitor_receive_device(monitor.get())};
        if (device) {
            changes.push_back(changeOf(device.get()));
        } else if (errno == ENOBUFS) {
            // The kernel dropped events. The bus has changed in an unknown way.
            changes.push_back({cDevNodesChanged, {}, {}});
        } else {
            break;
        }
    }
    if (!changes.empty())
        handle(changes);
}

DeviceNotice::DeviceNotice(Handler handler) : m_watch(std::make_unique<Watch>(std::move(handler))) {}

DeviceNotice::~DeviceNotice() = default;

bool DeviceNotice::isActive() const
{
    return m_watch->monitor != nullptr;
}

} // namespace platform
