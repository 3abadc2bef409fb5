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
    /// cDeviceArrival or cDeviceRemoveComplete; cDevNodesChanged for any other change.
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
 * This class does nothing on Windows. There the change arrives as a window message, and the application's
 * native event filter reads it with deviceChangeCode().
 */
class DeviceNotice
{
public:
    /// Receives at least one change, oldest first.
    using Handler = std::function<void(const std::vector<DeviceChange>& changes)>;

    explicit DeviceNotice(Handler handler);
    ~DeviceNotice();
    Q_DISABLE_COPY(DeviceNotice)

    /// Returns false when the system refuses to watch. The handler is then never called.
    bool isActive() const;

private:
    struct Watch;
    std::unique_ptr<Watch> m_watch;
};

} // namespace platform
