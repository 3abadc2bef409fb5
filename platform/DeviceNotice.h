// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QtGlobal>

#include <functional>
#include <memory>
#include <vector>

namespace platform {

/// One change of the USB bus.
struct DeviceChange
{
    /// cDeviceArrival, cDeviceRemoveComplete, or cDevNodesChanged for anything else.
    quint64 code = 0;
    /// Vendor and product number, four upper-case hexadecimal digits each; empty where the system does not
    /// name the device.
    QString vid;
    QString pid;
};

/**
 * Calls a handler when USB devices are added or removed, on the thread that created this object, from its
 * event loop. Pending changes are merged into one call.
 *
 * On Windows this does nothing: there the change arrives as a window message, which the application's
 * native event filter reads with deviceChangeCode().
 */
class DeviceNotice
{
public:
    /// Receives at least one change, oldest first.
    using Handler = std::function<void(const std::vector<DeviceChange>& changes)>;

    explicit DeviceNotice(Handler handler);
    ~DeviceNotice();
    Q_DISABLE_COPY(DeviceNotice)

    /// False when the system refuses to watch: the handler is then never called.
    bool isActive() const;

private:
    struct Watch;
    std::unique_ptr<Watch> m_watch;
};

} // namespace platform
