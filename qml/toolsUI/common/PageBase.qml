// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.15
import QtQuick.Window 2.15
import GenToolbox 1.0

import "../../customize"
import "../../customize/Format.js" as Format

/// Base of every page: state that the main window shares with it, and the background gradient.
Rectangle {
    id: _base

    /// Set by the main window while one of its edges is dragged.
    property bool resizingWindow: false
    property QtObject hidLink: GenToolbox.hidLink
    /// Ends of the background gradient.
    property color topColor: PageStyle.pageTop
    property color bottomColor: PageStyle.pageBottom

    /// Background opacity of the window, 0 to 1; 1 in a window that has none.
    readonly property real pageBackgroundOpacity: {
        var opacity = Window.window ? Window.window.windowBackgroundOpacity : undefined
        return opacity === undefined ? 1 : opacity
    }

    gradient: Gradient {
        GradientStop { position: 0; color: _base.bgColor(_base.topColor, 1) }
        GradientStop { position: 1; color: _base.bgColor(_base.bottomColor, 1) }
    }

    /// Returns the colour with the alpha opacity * pageBackgroundOpacity, clamped to 0 to 1.
    function bgColor(colorValue, opacity) {
        return Format.withAlpha(colorValue, opacity * pageBackgroundOpacity)
    }
}
