// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/DeviceChangeMessage.h"

std::optional<quint64> platform::deviceChangeCode(const QByteArray& eventType, const void* message)
{
    // Other windowing systems pass their own structures through the same filter.
    if (message == nullptr || (eventType != "windows_generic_MSG" && eventType != "windows_dispatcher_MSG"))
        return std::nullopt;
    const auto* native = static_cast<const WindowsMessage*>(message);
    if (native->message != cWmDeviceChange)
        return std::nullopt;
    const quint64 code = native->wParam;
    if (code != cDevNodesChanged && code != cDeviceArrival && code != cDeviceRemoveComplete)
        return std::nullopt;
    return code;
}
