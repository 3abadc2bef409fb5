// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.15

/// Base of the pages "User Settings" and "System Settings".
PageBase {
    id: _scaled

    readonly property real contentScale: Math.max(0.82, Math.min(1, width / 1180, height / 680))
    /// What the page hands to its parts.
    readonly property PageLook look: PageLook {
        contentScale: _scaled.contentScale
        backgroundOpacity: _scaled.pageBackgroundOpacity
    }

    function scaledPoint(size) {
        return look.point(size)
    }
}
