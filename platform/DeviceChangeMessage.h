// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QtGlobal>

#include <cstdint>
#include <optional>

namespace platform {

/// The Windows message about devices, and the kinds of change that may concern a USB device.
constexpr unsigned cWmDeviceChange = 0x0219;
constexpr quint64 cDevNodesChanged = 0x0007;
constexpr quint64 cDeviceArrival = 0x8000;
constexpr quint64 cDeviceRemoveComplete = 0x8004;

/// The leading members of the structure MSG of Windows, laid out the same on every platform.
struct WindowsMessage
{
    void* window;
    unsigned message;
    std::uintptr_t wParam;
    std::intptr_t lParam;
};

/// Returns the kind of device change that a native event reports: one of the three constants above. Returns
/// nothing for every other event. \a message is read only when \a eventType names a Windows MSG.
std::optional<quint64> deviceChangeCode(const QByteArray& eventType, const void* message);

} // namespace platform
