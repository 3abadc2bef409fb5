// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/WindowSizing.h"

#include <QWindow>

namespace platform {

bool startSystemResize(QWindow& window, Qt::Edges edges)
{
    return window.startSystemResize(edges);
}

} // namespace platform
