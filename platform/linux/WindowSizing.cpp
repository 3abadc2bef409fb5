// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/WindowSizing.h"

#include <QGuiApplication>
#include <QWindow>

namespace platform {

bool startSystemResize(QWindow& window, Qt::Edges edges)
{
    return window.startSystemResize(edges);
}

bool isWayland()
{
    // The platform is "wayland", "wayland-egl" or the like.
    return QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
}

} // namespace platform
