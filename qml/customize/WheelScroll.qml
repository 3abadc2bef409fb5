// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.15
import GenControl.ScreenTools 1.0

import "Scroll.js" as Scroll

/// Scrolls the Flickable that it is declared in: by the same length for each notch of a mouse wheel, however fast the
/// notches come. A Flickable by itself takes two quick ones for a throw to the end of its content. Touch pads are left
/// to it: it follows them pixel by pixel.
WheelHandler {
    // A Flickable hands its handlers on to its content.
    readonly property Flickable _view: parent.parent

    acceptedDevices: PointerDevice.Mouse
    target: null
    onWheel: {
        _view.cancelFlick()
        _view.contentY = Scroll.afterWheel(_view.contentY, _view.originY, _view.contentHeight, _view.height,
                                           event.angleDelta.y, ScreenTools.defaultFontPixelHeight * 5)
    }
}
