// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtQuick.Window 2.12
import GenToolbox 1.0

import "../../customize"
import "../../customize/Format.js" as Format

/// What the measurement pages have in common: the window's state and the background.
Rectangle {
    id: _page

    property bool resizingWindow: false
    readonly property real pageBackgroundOpacity: {
        var opacity = Window.window ? Window.window.windowBackgroundOpacity : undefined
        return opacity === undefined ? 1 : opacity
    }
    readonly property bool connected: GenToolbox.hidLink.connected

    gradient: Gradient {
        GradientStop { position: 0; color: _page.bgColor(PageStyle.pageTop, 1) }
        GradientStop { position: 1; color: _page.bgColor(PageStyle.pageBottom, 1) }
    }

    function bgColor(colorValue, opacity) {
        return Format.withAlpha(colorValue, opacity * pageBackgroundOpacity)
    }
}
