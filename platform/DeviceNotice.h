// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

#include <functional>
#include <memory>

namespace platform {

/**
 * Tells that USB devices came or went, through a function called on the thread that created this object,
 * from its event loop. A burst of changes that is waiting together is told once.
 *
 * On Windows this does nothing: there the change arrives as a window message, which the application's
 * native event filter reads with deviceChangeCode().
 */
class DeviceNotice
{
public:
    /// Receives cDeviceArrival, cDeviceRemoveComplete, or cDevNodesChanged for anything else.
    using Handler = std::function<void(quint64 code)>;

    explicit DeviceNotice(Handler handler);
    ~DeviceNotice();
    Q_DISABLE_COPY(DeviceNotice)

    /// Whether changes will be told; false when the system refuses to watch.
    bool isActive() const;

private:
    struct Watch;
    std::unique_ptr<Watch> m_watch;
};

} // namespace platform
