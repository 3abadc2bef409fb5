// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/DeviceNotice.h"

#include "platform/DeviceChangeMessage.h"
#include "platform/linux/UdevPointers.h"

#include <QSocketNotifier>

#include <cerrno>
#include <cstring>
#include <optional>
#include <utility>

namespace platform {

struct DeviceNotice::Watch
{
    explicit Watch(Handler handler);

    /// Reads every waiting event and tells the handler once about them.
    void drain();

    Handler tell;
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

} // namespace

DeviceNotice::Watch::Watch(Handler handler) : tell(std::move(handler))
{
    if (!context)
        return;
    // The source "udev" speaks after the rules have run: the device node has its permissions by then.
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
    std::optional<quint64> last;
    for (;;) {
        errno = 0;
        const UdevDevice device{udev_monitor_receive_device(monitor.get())};
        if (device) {
            last = codeOf(device.get());
        } else if (errno == ENOBUFS) {
            // The kernel dropped events: what happened is unknown, that something did is certain.
            last = cDevNodesChanged;
        } else {
            break;
        }
    }
    if (last)
        tell(*last);
}

DeviceNotice::DeviceNotice(Handler handler) : m_watch(std::make_unique<Watch>(std::move(handler))) {}

DeviceNotice::~DeviceNotice() = default;

bool DeviceNotice::isActive() const
{
    return m_watch->monitor != nullptr;
}

} // namespace platform
