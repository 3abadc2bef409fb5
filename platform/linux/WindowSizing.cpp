// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/WindowSizing.h"

#include <QWindow>

namespace platform {

bool startSystemResize(QWindow& window, Qt::Edges edges)
{
#if QT_VERSION >= QT_VERSION_CHECK(5, 15, 0)
    return window.startSystemResize(edges);
#else
    Q_UNUSED(window)
    Q_UNUSED(edges)
    return false;
#endif
}

} // namespace platform
